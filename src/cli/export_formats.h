// The formats that reports are exported to, each in a .cpp of its own. Texts come as bytes of the code page and go out
// as UTF-8; the shape of each is described in docs/cli.md.
#pragma once

#include <string>
#include <string_view>

struct ReportEvents;

std::string ExportJson(const ReportEvents &report);
std::string ExportXml(const ReportEvents &report);
std::string ExportCsv(const ReportEvents &report);
std::string ExportMarkdown(const ReportEvents &report);

// A text of the code page in UTF-8, its line breaks as line feeds.
std::string ExportedText(std::string_view text);

// Blanks before what lies so deep; no more of them where nobody could read on anyway.
std::string Indented(std::size_t depth);

// In double quotes, as JSON writes strings.
std::string JsonText(std::string_view text);
