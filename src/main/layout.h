// Where the main window's controls stand.
#pragma once

#include "platform/layout.h"

Place MainLayout();
