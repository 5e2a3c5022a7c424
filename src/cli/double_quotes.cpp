// Finding values that hold a double quote (double_quotes.h).
#include "cli/double_quotes.h"

#include "groups/store.h"
#include "model/field_model.h"
#include "report/records.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

// Level and title of the elements whose values hold one.
using Holders = std::set<std::pair<Integer, std::string>>;

void AddHolder(Holders &holders, Integer element, std::string_view value) {
    if (FieldInfo[element][TypeCode] == Memo || value.find('"') == std::string_view::npos) return;
    holders.insert({LevelOf(element), FieldTitle[element]});
}

void AddMembers(Holders &holders, Integer head) {
    std::string cells;
    const auto length = static_cast<std::size_t>(ReadStore(head, cells).Items);
    if (cells.find('"') == std::string::npos) return;
    for (std::size_t first = 0; first < cells.size(); first += length) {
        std::size_t cell = first;
        for (Integer e = ToInteger(head + 1); e < GroupEnd(head); ++e) {
            if (!HasValue(e)) continue;
            const auto size = static_cast<std::size_t>(FieldInfo[e][KindItem]);
            AddHolder(holders, e, std::string_view(cells).substr(std::min(cell, cells.size()), size));
            cell += size;
        }
    }
}

Holders FindHolders() {
    Holders holders;
    for (int number = 1; number <= NumFields; ++number) {
        const Integer e = ToInteger(number);
        if (HasValue(e) && FieldRow[e] > 0) AddHolder(holders, e, RowValue[ToInteger(FieldRow[e] - 1)]);
    }
    for (const Integer head : WrittenStores()) AddMembers(holders, head);
    return holders;
}

} // namespace

std::vector<QuotedValue> FindDoubleQuotes(ItemInput report) {
    std::vector<QuotedValue> found;
    const Holders holders = FindHolders();
    if (holders.empty()) return found;
    report.At = 0;
    if (!ReadReportHeader(report)) return found;
    LinePlace counted;
    ReportRecord record;
    // A load has told of a record that cannot be read.
    FaultOf([&] {
        for (BeginRecord(report); !AtEnd(report); BeginRecord(report)) {
            const std::size_t at = report.At;
            ReadReportRecord(report, record);
            if (record.Count >= 0 && record.Text.find('"') != std::string::npos &&
                holders.contains({record.Level, record.Title}))
                found.push_back({LineAt(counted, report.Bytes, at), record.Title});
        }
    });
    return found;
}

std::string DoubleQuoteText(const std::string &title) {
    return "The value of the field " + title +
           " holds a double quote! A report that is saved with it could not be read back.";
}
