// The main window's controls (main_window.h).
#include "form/main_window.h"

QuintaveForm Quintave;
