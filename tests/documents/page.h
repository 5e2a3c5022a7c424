// A page of the documents as its lines.
#pragma once

#include "documents/resources.h"

// A text at its line feeds.
inline std::vector<std::string> LinesOf(const std::string &text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
        end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
    }
    return lines;
}

// The lines between ```LANGUAGE and ``` of a page; there has to be one such block.
inline std::vector<std::string> Block(const std::string &page, const std::string &language) {
    const std::string fence = "\n```" + language + "\n";
    const auto start = page.find(fence);
    EXPECT_NE(start, std::string::npos) << language;
    EXPECT_EQ(page.find(fence, start + 1), std::string::npos) << language;
    return LinesOf(page.substr(start + fence.size(), page.find("\n```", start + 1) - start - fence.size() + 1));
}
