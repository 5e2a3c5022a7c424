// Walking through a template (template_walk.h). Its lines: template_lines.cpp; the loader's own way through it:
// model/template_reader.cpp.
#include "cli/template_walk.h"

#include "cli/template_elements.h"
#include "cli/template_header.h"
#include "cli/template_lines.h"
#include "model/template_reader.h"
#include "platform/characters.h"

#include <algorithm>
#include <utility>

namespace {

// A record with a slip: where its type can be found, what stands behind it is still what it is.
void WalkBeyondSlip(Walk &walk, const TemplateLine &line) {
    walk.Above = walk.Untyped = {};
    walk.Deeper = 0;
    walk.OddType = walk.OrphansTold = false;
    Record record{line.Number};
    for (std::size_t item = 0; item < std::min<std::size_t>(line.Items.size(), 4) && record.Type.empty(); ++item)
        if (const std::string text = UpperCase(WithoutOddQuotes(line.Items[item])); IsKnownType(text))
            record.Type = text;
    if (record.Type == "GROUP START" && walk.GroupLine == 0) {
        walk.GroupLine = line.Number;
        walk.GroupLength = 0;
    }
    if (record.Type == "GROUP END") walk.GroupLine = 0;
    if (record.Type == "LIST") WalkChoices(walk, record);
}

// Choices where there is no list: told once, and not where the type that was to be LIST is told.
void WalkOrphan(Walk &walk, const TemplateLine &line, const std::string &slip) {
    if (walk.OddType)
        walk.Found.Faults.back().Astray = true;
    else if (!walk.OrphansTold)
        TellAstray(walk, line.Number, slip);
    walk.OrphansTold = true;
}

void WalkSlip(Walk &walk, const TemplateLine &line, const std::string &slip) {
    if (line.Items.size() == 1 && line.Divider == ',' && !IsComment(line)) {
        WalkOrphan(walk, line, slip);
        return;
    }
    TemplateLine next;
    const bool isCut = line.Quoting == Quotes::Sound && line.Items.size() < 6 && line.Divider == ',' &&
                       !IsComment(line) && !PeekLine(walk.Lines, next);
    if (isCut)
        Refuse(walk, line.Number, InputPastEnd, "the record has fewer than six items, or a quote is not closed");
    else if (line.Divider == ',' || !walk.DividerTold)
        TellAstray(walk, line.Number, slip);
    walk.DividerTold = walk.DividerTold || line.Divider != ',';
    WalkBeyondSlip(walk, line);
}

// A record may also stand on several lines, each of which holds some of its items. The line becomes the whole record.
bool TakeSpread(TemplateLines &lines, TemplateLine &line) {
    TemplateLines ahead{{}, lines.Counted};
    std::swap(ahead.Input, lines.Input);
    const std::size_t at = ahead.Input.At;
    TemplateLine whole = line;
    TemplateLine next;
    const bool typeFollows = line.Items.size() < 3;
    while (whole.Items.size() < 6 && NextLine(ahead, next) && next.Quoting == Quotes::Sound && next.Divider == ',' &&
           !LooksLikeRecord(next) && !IsComment(next))
        whole.Items.insert(whole.Items.end(), next.Items.begin(), next.Items.end());
    std::swap(ahead.Input, lines.Input);
    // Behind a list choices may stand for the items that are missing.
    const bool isRecord =
        whole.Items.size() == 6 && LooksLikeRecord(whole) && (typeFollows || UpperCase(whole.Items[2].Text) != "LIST");
    if (isRecord)
        line = whole;
    else
        lines.Input.At = at;
    return isRecord;
}

void WalkRecord(Walk &walk, TemplateLine line) {
    std::string slip = SlipOfRecord(line, "record");
    const bool mayGoOn = line.Quoting == Quotes::Sound && line.Items.size() < 6 && IsWholeNumber(line.Items[0].Text);
    if (!slip.empty() && mayGoOn && TakeSpread(walk.Lines, line)) slip.clear();
    // Where the quotes alone are wrong, the items may still be six.
    const bool isRecord = line.Items.size() == 6 && !IsComment(line) &&
                          (line.Quoting == Quotes::Stray || line.Quoting == Quotes::Doubled);
    if (slip.empty() || isRecord) {
        if (isRecord) Tell(walk, line.Number, slip);
        WalkElement(walk, RecordOf(walk, line));
    } else {
        WalkSlip(walk, line, slip);
    }
}

bool EndsWithLine(std::string_view bytes, std::size_t at) {
    constexpr std::string_view LineEnds = "\r\n";
    return at >= bytes.size() || LineEnds.find(bytes[at - 1]) != std::string_view::npos;
}

// The input stands behind the header as a load has read it.
void WalkHeader(Walk &walk) {
    const std::size_t behind = walk.Lines.Input.At;
    walk.Lines.Input.At = 0;
    TemplateLine line;
    NextLine(walk.Lines, line);
    const std::string slip = SlipOfRecord(line, "header");
    walk.DividerTold = line.Divider != ',';
    if (slip.empty()) return;
    if (behind > walk.Lines.Input.At && line.Quoting == Quotes::Sound && line.Divider == ',' &&
        EndsWithLine(walk.Lines.Input.Bytes, behind))
        walk.Lines.Input.At = behind;
    else
        TellAstray(walk, line.Number, slip);
}

} // namespace

TemplateWalk WalkTemplate(ItemInput input, const DirectoryNames *beside) {
    constexpr std::string_view WrongHeader =
        "A load refuses it: This is not a valid Fields Template File! Please Try Again. ";
    TemplateLines lines{std::move(input)};
    TemplateWalk found;
    Walk walk{lines, beside, found};
    std::string suffix;
    if (!ReadTemplateHeader(lines.Input, suffix)) {
        Tell(walk, 1, std::string(WrongHeader) + WhyNoTemplate(lines.Input));
        found.WrongHeader = true;
        return found;
    }
    WalkHeader(walk);
    TemplateLine line;
    while (NextLine(lines, line)) WalkRecord(walk, line);
    if (walk.GroupLine != 0) Refuse(walk, walk.GroupLine, InputPastEnd, "the group is not ended by GROUP END");
    return found;
}
