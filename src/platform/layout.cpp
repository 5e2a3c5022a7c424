// What both fronts do with a layout (layout.h).
#include "platform/layout.h"

#include "platform/controls.h"

void SetContainers(const Place &place, Control *container) {
    if (place.Of != nullptr) {
        place.Of->Container = container;
        container = place.Of;
    }
    for (const Place &part : place.Parts) SetContainers(part, container);
}
