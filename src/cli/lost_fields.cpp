// Finding fields that titles do not tell apart (lost_fields.h). How a record finds its element: report/title_index.
#include "cli/lost_fields.h"

#include "model/field_model.h"

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

// A template made to keep the search busy is looked at in part; none that people fill in comes near this.
constexpr long MostSteps = 200'000'000;

using ElementList = std::vector<Integer>;

struct Element {
    Integer Outer = 0;    // the section or group around it; 0 for none
    Integer Outmost = 0;  // the last of those around it
    bool Written = false; // its title may stand in a report ...
    bool Always = false;  // ... and does in every one that has anything behind it
};

struct Search {
    std::vector<Element> About;                               // by element
    std::map<Integer, ElementList, std::greater<>> ByLevel{}; // those with a title, the deepest level first
    // What a record could belong to, by group (-1: it is one), level and title.
    std::map<std::tuple<Integer, Integer, std::string>, ElementList> Alike{};
    long Steps = 0;

    Element &Of(Integer element) { return About[static_cast<std::size_t>(element)]; }
};

bool IsTarget(Integer element) { return HasValue(element) || IsGroupStart(element); }

// A target may be written, and what stands around it; a group is in any case.
void MarkWritten(Search &search, Integer target) {
    const bool isGroup = IsGroupStart(target);
    for (Integer e = target; e != 0; e = search.Of(e).Outer) {
        Element &about = search.Of(e);
        if (about.Written && (about.Always || !isGroup)) break; // so is the rest
        about.Written = true;
        about.Always = about.Always || isGroup;
    }
}

Search NewSearch() {
    Search search{std::vector<Element>(static_cast<std::size_t>(NumFields) + 1)};
    Integer around = 0;
    for (const Integer e : Elements()) {
        const bool isGroupEnd = IsGroupEnd(e);
        const Integer level = LevelOf(isGroupEnd ? FieldGroup[e] : e);
        while (around != 0 && LevelOf(around) >= level) around = search.Of(around).Outer;
        if (isGroupEnd) continue;
        const Integer outmost = search.Of(around).Outmost;
        search.Of(e) = {around, outmost != 0 ? outmost : around};
        search.ByLevel[level].push_back(e);
        if (IsTarget(e)) {
            search.Alike[{IsGroupStart(e) ? Integer{-1} : FieldGroup[e], level, FieldTitle[e]}].push_back(e);
            MarkWritten(search, e);
        }
        if (IsSection(e) && FieldGroup[e] != 0) search.Of(e).Written = search.Of(e).Always = true; // in each occurrence
        if (IsSection(e) || IsGroupStart(e)) around = e;
    }
    return search;
}

// The title last passed at a level on the way through the template to an element.
const std::string &PassedAt(const ElementList &level, Integer element) {
    static const std::string none;
    const auto next = std::lower_bound(level.begin(), level.end(), element);
    return next == level.begin() ? none : FieldTitle[*std::prev(next)];
}

enum class Found { Yes, No, Open };

// Looks at the elements of a level between two, from behind, for a title that a report may show there.
template <typename Wanted>
Found LookBack(Search &search, const ElementList &level, Integer from, Integer behind, const Wanted &wanted) {
    auto next = std::lower_bound(level.begin(), level.end(), behind);
    while (next != level.begin() && *std::prev(next) > from) {
        const Integer e = *--next;
        if (++search.Steps > MostSteps) return Found::No;
        if (search.Of(e).Written && wanted(FieldTitle[e])) return Found::Yes;
        if (search.Of(e).Always) return Found::No;
    }
    return Found::Open;
}

// The title last read at a level, where the record of an element comes, may be one that is wanted: its fields before
// may all be empty or filled in. A member may also follow those behind it, of the occurrence before.
template <typename Wanted>
bool MayBeRead(Search &search, const ElementList &level, Integer element, const Wanted &wanted) {
    const Integer group = IsGroupStart(element) ? Integer{0} : FieldGroup[element];
    Found found = LookBack(search, level, group, element, wanted);
    if (found == Found::Open && group != 0) {
        if (LookBack(search, level, element, GroupEnd(group), wanted) == Found::Yes) return true;
        found = LookBack(search, level, 0, ToInteger(group + 1), wanted);
    }
    return found == Found::Yes || (found == Found::Open && wanted(std::string()));
}

// The heading at a level around an element, of which the next inner one is given; 0 for none.
Integer HeadingAt(Search &search, Integer level, Integer &inner) {
    while (inner != 0 && LevelOf(inner) > level) inner = search.Of(inner).Outer;
    return inner != 0 && LevelOf(inner) == level ? inner : Integer{0};
}

// The outermost headings show that no record of one can come to the other, which spares looking at the rest.
bool AreApart(Search &search, Integer element, Integer other) {
    const Integer own = search.Of(element).Outmost;
    const Integer others = search.Of(other).Outmost;
    return own != 0 && others != 0 && LevelOf(own) == LevelOf(others) && LevelOf(own) != 0 &&
           FieldTitle[own] != FieldTitle[others];
}

// A record of the element can come where the titles read are those passed on the way to the other one.
bool TakesByPath(Search &search, Integer element, Integer other) {
    bool differs = false;
    Integer inner = search.Of(element).Outer;
    for (auto at = search.ByLevel.upper_bound(LevelOf(element)); at != search.ByLevel.end(); ++at) {
        const auto &[level, elements] = *at;
        if (level == 0) break;
        ++search.Steps;
        const std::string &wanted = PassedAt(elements, other);
        if (const Integer heading = HeadingAt(search, level, inner); heading != 0) {
            if (FieldTitle[heading] != wanted) return false;
            continue;
        }
        differs = differs || PassedAt(elements, element) != wanted;
        if (!MayBeRead(search, elements, element, [&](const std::string &title) { return title == wanted; }))
            return false;
    }
    return differs || other < element;
}

// It can come where the titles read are not those passed on the way to the element itself, but those of the headings
// around an earlier one.
bool TakesByHeadings(Search &search, Integer element, Integer other) {
    bool differs = false;
    Integer inner = search.Of(element).Outer;
    Integer otherInner = search.Of(other).Outer;
    for (auto at = search.ByLevel.upper_bound(LevelOf(element)); at != search.ByLevel.end(); ++at) {
        const auto &[level, elements] = *at;
        ++search.Steps;
        const Integer heading = HeadingAt(search, level, inner);
        const Integer wanted = HeadingAt(search, level, otherInner);
        if (heading != 0) {
            if (wanted != 0 && FieldTitle[heading] != FieldTitle[wanted]) return false;
            continue;
        }
        const std::string &passed = PassedAt(elements, element);
        const auto fits = [&](const std::string &title) {
            return wanted != 0 ? title == FieldTitle[wanted] : title != passed;
        };
        const bool mayBe = MayBeRead(search, elements, element, fits);
        if (wanted != 0 && !mayBe) return false;
        differs = differs || (wanted != 0 ? FieldTitle[wanted] != passed : mayBe && level != 0);
    }
    return differs && other < element;
}

} // namespace

LostFields FindLostFields() {
    Search search = NewSearch();
    LostFields lost;
    for (const auto &[key, elements] : search.Alike)
        for (const Integer element : elements)
            for (const Integer other : elements) {
                if (++search.Steps > MostSteps) return lost;
                if (element == other || AreApart(search, element, other)) continue;
                if (!TakesByPath(search, element, other) && !TakesByHeadings(search, element, other)) continue;
                lost.Takers[element] = other;
                break;
            }
    lost.AllCompared = true;
    return lost;
}

std::map<Integer, Integer> FindEqualPaths() {
    Search search = NewSearch();
    std::vector<Integer> paths(search.About.size()); // of each element the first one that has its path
    std::map<std::pair<Integer, std::string>, Integer> first;
    std::map<Integer, Integer> equal;
    for (const Integer e : Elements()) {
        const Integer around = paths[static_cast<std::size_t>(search.Of(e).Outer)];
        if (!IsTarget(e) && !IsSection(e)) continue;
        const auto [same, isNew] = first.try_emplace({around, FieldTitle[e]}, e);
        paths[static_cast<std::size_t>(e)] = same->second;
        if (!isNew && IsTarget(e) && IsTarget(same->second)) equal[e] = same->second;
    }
    return equal;
}
