// The program's icon.
#pragma once

#include <QIcon>

QIcon ProgramIcon();
