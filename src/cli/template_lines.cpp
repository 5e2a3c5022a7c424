// Dividing a template's lines and counting their items (template_lines.h).
#include "cli/template_lines.h"

#include "model/template_reader.h"
#include "platform/characters.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t RecordItems = 6;
constexpr std::string_view LineEnds = "\r\n";
constexpr std::string_view Digits = "0123456789";

bool EndsLine(std::string_view text, std::size_t at) {
    return at >= text.size() || LineEnds.find(text[at]) != std::string_view::npos;
}

struct Division {
    std::vector<LineItem> Items{};
    Quotes Quoting = Quotes::Sound;
    std::size_t End = 0; // of the line, among the text's bytes
};

// A quoted item and the divider behind it; false where the line ends with it.
bool TakeQuoted(std::string_view text, char divider, Division &line) {
    const std::size_t first = line.End + 1;
    const std::size_t closing = text.find('"', first);
    line.Items.push_back({std::string(text.substr(first, closing - first)), true});
    if (closing == std::string_view::npos) {
        line.Quoting = Quotes::NotClosed;
        return false;
    }
    const std::size_t next = std::min(text.find_first_not_of(divider == '\t' ? " " : " \t", closing + 1), text.size());
    line.End = next;
    if (EndsLine(text, next)) return false;
    if (text[next] == divider)
        ++line.End;
    else
        line.Quoting = std::max(line.Quoting, text[closing + 1] == '"' ? Quotes::Doubled : Quotes::Stray);
    return true;
}

bool TakePlain(std::string_view text, char divider, Division &line) {
    const std::size_t end = std::min(text.find_first_of(std::string(LineEnds) + divider, line.End), text.size());
    const std::string_view item = text.substr(line.End, end - line.End);
    line.Items.push_back({std::string(item.substr(0, item.find_last_not_of(" \t") + 1)), false});
    line.End = end;
    if (EndsLine(text, end)) return false;
    ++line.End;
    return true;
}

// Up to the first line end outside quotes, or, where the quotes have to be sound, to the first that is not.
Division Divide(std::string_view text, char divider, bool soundOnly) {
    Division line;
    for (bool more = true; more && (!soundOnly || line.Quoting == Quotes::Sound);) {
        line.End = std::min(text.find_first_not_of(divider == '\t' ? " " : " \t", line.End), text.size());
        const bool quoted = line.End < text.size() && text[line.End] == '"';
        more = quoted ? TakeQuoted(text, divider, line) : TakePlain(text, divider, line);
    }
    return line;
}

// The marks that editors and languages use for quotes.
constexpr std::array<std::string_view, 6> OddQuotes{"\u201C", "\u201D", "\u201E", "\u201F", "\u00AB", "\u00BB"};
// These may also begin a word, as an apostrophe.
constexpr std::array<std::string_view, 3> SingleQuotes{"'", "\u2018", "\u2019"};

// The length of the mark that an item begins or ends with; 0 for none.
template <std::size_t Count>
std::size_t MarkAt(const std::array<std::string_view, Count> &marks, std::string_view text, bool atEnd) {
    for (const std::string_view mark : marks)
        if (text.size() > mark.size() && (atEnd ? text.ends_with(mark) : text.starts_with(mark))) return mark.size();
    return 0;
}

bool HasOddQuotes(const LineItem &item) {
    if (item.Quoted) return false;
    return MarkAt(OddQuotes, item.Text, false) > 0 ||
           (MarkAt(SingleQuotes, item.Text, false) > 0 && MarkAt(SingleQuotes, item.Text, true) > 0);
}

std::string QuoteSlip(const TemplateLine &line) {
    if (std::any_of(line.Items.begin(), line.Items.end(), HasOddQuotes))
        return "only straight double quotes enclose an item: those here become a part of it";
    switch (line.Quoting) {
    case Quotes::NotClosed: return "a quote is not closed";
    case Quotes::Doubled: return "two double quotes do not stand for one: the first of them ends the item";
    case Quotes::Stray: return "what stands behind the closing quote is taken for the next item";
    case Quotes::Sound: break;
    }
    return "";
}

// A text that is divided by its own comma stands where title, help line and help file do.
bool HasUnquotedText(const TemplateLine &line) {
    return std::any_of(line.Items.begin() + 3, line.Items.end(), [](const LineItem &item) {
        return !item.Quoted && !item.Text.empty() && !IsWholeNumber(item.Text);
    });
}

// Behind the last item a comma does no harm.
std::size_t CountItems(const TemplateLine &line, std::size_t wanted) {
    const bool commaAtEnd = line.Items.size() == wanted + 1 && IsBehindLastComma(line.Items.back(), line);
    return line.Items.size() - (commaAtEnd && (wanted == 1 || !HasUnquotedText(line)) ? 1 : 0);
}

bool LooksLikeRecord(const std::vector<LineItem> &items) {
    if (items.size() < 3) return false;
    const bool level = IsWholeNumber(items[0].Text);
    const bool kind = IsWholeNumber(items[1].Text);
    const std::string type = WithoutOddQuotes(items[2]);
    return (IsKnownType(type) && (level || kind)) || (level && IsKnownType(WithoutOddQuotes(items[1]))) ||
           (level && kind && type.empty() && items.size() > 3);
}

// Other programs write lists of items with other dividers.
void FindDivider(std::string_view text, TemplateLine &line) {
    if (line.Items.size() >= 3 && line.Quoting == Quotes::Sound) return;
    for (const char divider : {';', '\t'}) {
        Division divided = Divide(text, divider, false);
        const bool isHeader = divided.Items.size() >= 3 && divided.Items[0].Text == TemplateIdentifier;
        if (divided.Quoting != Quotes::Sound || (!isHeader && !LooksLikeRecord(divided.Items))) continue;
        line.Items = std::move(divided.Items);
        line.Quoting = divided.Quoting;
        line.Divider = divider;
        return;
    }
}

} // namespace

bool NextLine(TemplateLines &lines, TemplateLine &line) {
    ItemInput &input = lines.Input;
    BeginRecord(input);
    if (input.At >= input.Bytes.size()) return false;
    const std::string_view rest = std::string_view(input.Bytes).substr(input.At);
    const std::string_view alone = rest.substr(0, rest.find_first_of(LineEnds));
    Division divided = Divide(alone, ',', false);
    if (divided.Quoting == Quotes::NotClosed) {
        Division longer = Divide(rest, ',', true);
        if (longer.Quoting == Quotes::Sound) divided = std::move(longer);
    }
    line = {LineAt(lines.Counted, input.Bytes, input.At), std::move(divided.Items), divided.Quoting};
    FindDivider(alone, line);
    input.At += std::max(divided.End, alone.size());
    return true;
}

bool PeekLine(TemplateLines &lines, TemplateLine &line) {
    const std::size_t at = lines.Input.At;
    const bool found = NextLine(lines, line);
    lines.Input.At = at;
    return found;
}

bool IsBehindLastComma(const LineItem &item, const TemplateLine &line) {
    return &item == &line.Items.back() && !item.Quoted && item.Text.empty();
}

bool IsWholeNumber(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of(Digits) == std::string_view::npos;
}

bool IsKnownType(std::string_view type) {
    constexpr std::array<std::string_view, 5> Types{"TEXT", "MEMO", "LIST", "GROUP START", "GROUP END"};
    return std::find(Types.begin(), Types.end(), UpperCase(type)) != Types.end();
}

bool LooksLikeRecord(const TemplateLine &line) { return LooksLikeRecord(line.Items); }

std::string SlipOfRecord(const TemplateLine &line, std::string_view name) {
    if (IsComment(line)) return "a template has no comments: this line is read as items of a record";
    if (line.Divider != ',')
        return std::string("commas divide items, and not ") + (line.Divider == ';' ? "semicolons" : "tabs");
    if (std::string slip = QuoteSlip(line); !slip.empty()) return slip;
    const std::size_t count = CountItems(line, RecordItems);
    if (count == RecordItems) return "";
    if (count == 1) return "a line of one item is a choice, and this one does not stand in a list";
    std::string slip =
        "the " + std::string(name) + " has " + std::to_string(count) + " items, and not " + std::to_string(RecordItems);
    if (count > RecordItems && HasUnquotedText(line)) slip += ": a text that holds a comma needs double quotes";
    return slip;
}

std::string SlipOfChoices(const TemplateLine &line) {
    if (std::string slip = QuoteSlip(line); !slip.empty()) return slip;
    const std::size_t count = CountItems(line, 1);
    if (count == 1 || std::all_of(line.Items.begin(), line.Items.end(), [](const LineItem &i) { return i.Quoted; }))
        return "";
    return "a comma outside quotes divides this into " + std::to_string(count) + " choices";
}

std::string WithoutOddQuotes(const LineItem &item) {
    if (!HasOddQuotes(item)) return item.Text;
    const std::size_t before = MarkAt(OddQuotes, item.Text, false) + MarkAt(SingleQuotes, item.Text, false);
    const std::size_t after = MarkAt(OddQuotes, item.Text, true) + MarkAt(SingleQuotes, item.Text, true);
    return item.Text.substr(before, item.Text.size() - std::min(before + after, item.Text.size()));
}

bool IsComment(const TemplateLine &line) {
    constexpr std::array<std::string_view, 8> Signs{"#", ";", "'", "*", "!", "//", "--", "<!--"};
    const LineItem &first = line.Items.front();
    if (first.Quoted || HasOddQuotes(first)) return false;
    return UpperCase(first.Text).starts_with("REM ") ||
           std::any_of(Signs.begin(), Signs.end(), [&](std::string_view sign) { return first.Text.starts_with(sign); });
}
