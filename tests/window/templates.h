// Templates that the window's tests share.
#pragma once

#include <string>
#include <vector>

// Rows: 0 Title (30), 1 Abstract (200), 2 Notes (memo), 3 Colour (choices), 4 dashes, 5 Samples (group: Depth, Rock,
// Log).
inline std::vector<std::string> AllKinds() {
    return {R"(1,-1,"TEXT","Citation","","")",
            R"(2,30,"TEXT","Title","A short name","")",
            R"(2,200,"TEXT","Abstract","","")",
            R"(2,999,"MEMO","Notes","","")",
            R"(2,20,"LIST","Colour","","")",
            "<RESET/CLEAR FIELD ENTRY>",
            "Red",
            "Maple",
            "Mango",
            "OTHER...",
            "XXX-1XXX",
            R"(1,-1,"TEXT","Field work","","")",
            R"(2,20,"GROUP START","Samples","","")",
            R"(3,8,"TEXT","Depth","","")",
            R"(3,8,"LIST","Rock","","")",
            "Granite",
            "Marble",
            "XXX-1XXX",
            R"(3,90,"MEMO","Log","","")",
            R"(2,1,"GROUP END","","","")"};
}

enum AllKindsRow { TitleRow, AbstractRow, NotesRow, ColourRow, DashesRow, SamplesRow };

// Text rows with the titles given.
inline std::vector<std::string> TextRows(const std::vector<std::string> &titles) {
    std::vector<std::string> lines;
    for (const auto &title : titles) lines.push_back("1,30,\"TEXT\",\"" + title + "\",\"\",\"\"");
    return lines;
}
