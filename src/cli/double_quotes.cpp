// Finding values that hold a double quote (double_quotes.h).
#include "cli/double_quotes.h"

#include "model/cells.h"
#include "model/field_model.h"
#include "model/store.h"
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
    Cells cells;
    ReadStore(head, cells);
    if (cells.Bytes.find('"') == std::string::npos) return;
    const GroupMembers &members = Members(head);
    std::string room;
    for (std::size_t k = 0; k < CountIn(cells); ++k)
        for (std::size_t i = 0; i < members.size(); ++i)
            AddHolder(holders, members[i].Element, MemberIn(cells, members, k, i, room));
}

Holders FindHolders() {
    Holders holders;
    for (const Integer e : Elements())
        if (HasRow(e)) AddHolder(holders, e, ValueOf(e));
    for (const Integer head : WrittenStores()) AddMembers(holders, head);
    return holders;
}

} // namespace

std::vector<QuotedValue> FindDoubleQuotes(const ItemInput &loaded) {
    std::vector<QuotedValue> found;
    const Holders holders = FindHolders();
    if (holders.empty()) return found;
    ItemInput report = ItemsOf(loaded.Bytes);
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
