// How a window's controls stand beside each other, as data: the program writes the tree (main/layout.cpp), a front
// shows it. The order of the tree is the order of the Tab key.
#pragma once

#include <string_view>
#include <vector>

struct Control;

enum class Shape : unsigned char {
    One,    // a control; a frame holds its parts as a column
    Column, // parts below each other
    Row,    // parts beside each other
    Pages,  // parts in one place, of which the last visible one is shown
    Space,  // nothing; takes what is left over
};

struct Place {
    Shape Form = Shape::One;
    Control *Of = nullptr;
    int Columns = 0; // least width in characters of the control's font, of a row or column the width; 0 for its own
    int Lines = 0;   // least height in lines, of a row or column the height in lines of its largest font; 0 for its own
    int Stretch = 0; // share of what is left over
    std::vector<Place> Parts;
};

// Tells every control of the tree which frame it stands in.
void SetContainers(const Place &place, Control *container = nullptr);
