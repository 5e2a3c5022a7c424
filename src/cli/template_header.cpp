// Finding out why a file is no template (template_header.h).
#include "cli/template_header.h"

#include "cli/template_lines.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "platform/characters.h"

namespace {

// Every second byte of such a text is 0, or a mark tells.
bool IsUtf16(std::string_view bytes) {
    return bytes.starts_with("\u00FF\u00FE") || bytes.starts_with("\u00FE\u00FF") ||
           bytes.substr(0, TemplateIdentifier.size()).find('\0') != std::string_view::npos;
}

std::string FaultOfLine(const TemplateLine &line) {
    const bool begins = WithoutOddQuotes(line.Items[0]) == TemplateIdentifier;
    std::string slip = SlipOfRecord(line, "header");
    if (!slip.empty() && (begins || IsComment(line) || line.Divider != ',')) return slip;
    if (!begins) return "it does not begin with " + Quoted(TemplateIdentifier);
    return "its second item does not begin with " + std::string(VersionIdentifier);
}

} // namespace

std::string WhyNoTemplate(const ItemInput &input) {
    if (IsUtf16(input.Bytes)) return "It is UTF-16, and neither UTF-8 nor Windows-1252.";
    TemplateLines lines{{input.Bytes}};
    TemplateLine line;
    if (!NextLine(lines, line)) return "It is empty.";
    return Sentence(FaultOfLine(line)) + '.';
}

std::string Sentence(const std::string &text) {
    const std::string_view first = FirstCharacters(text, 1);
    return UpperCase(first) + text.substr(first.size());
}
