// The index of title paths (title_index.h).
#include "report/title_index.h"

#include "model/field_model.h"

#include <algorithm>
#include <functional>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

using Hash = std::uint64_t;

// The elements that share one path, by what a record may belong to; 0 for none.
struct Entry {
    Integer Field = 0;
    Integer Group = 0;
    std::vector<Integer> Members; // in template order
};

// The levels of the headings that enclose an element, as a chain of numbers in Shapes; 0 is the empty chain.
using ShapeNumber = std::size_t;

struct Shape {
    ShapeNumber Outer;
    Integer Level;
};

// The titles at levels 1 to some level as one number: a sum, so that a title can be exchanged where it stands, and what
// a record costs does not grow with its depth. Two different paths of one template share a number about as often as two
// files share a checksum of 64 bits; an element's own title is compared.
class PathSums {
public:
    void Forget(); // all titles are empty
    void Put(Integer level, Hash title);
    Hash At(Integer level) const { return titles[static_cast<std::size_t>(level)]; }
    Hash UpTo(Integer level);

private:
    std::vector<Hash> titles; // by level
    std::vector<Hash> sums;
    std::size_t known = 0; // levels whose sum is right
};

PathSums Passed;
PathSums Read;

// By the whole path, and by the enclosing headings alone.
std::unordered_map<Hash, Entry> ByPath;
std::unordered_map<Hash, Entry> ByHeadings;

// The chains of enclosing headings, and which of them occur for a level and title.
std::vector<Shape> Shapes;
std::unordered_map<Hash, std::vector<ShapeNumber>> ShapesOf;

Hash Mixed(Hash number) {
    number ^= number >> 33;
    number *= 0xFF51AFD7ED558CCDULL; // an odd number whose bits spread over all of the product
    number ^= number >> 33;
    return number;
}

Hash HashOf(Integer level, std::string_view title) {
    return Mixed(std::hash<std::string_view>{}(title) + static_cast<Hash>(level + 1) * 0x9E3779B97F4A7C15ULL);
}

void PathSums::Forget() {
    titles.clear();
    for (int level = 0; level <= DeepestLevel; ++level) titles.push_back(HashOf(static_cast<Integer>(level), ""));
    sums.assign(titles.size(), 0);
    known = 0;
}

void PathSums::Put(Integer level, Hash title) {
    const auto at = static_cast<std::size_t>(level);
    titles[at] = title;
    known = std::min(known, at == 0 ? at : at - 1);
}

Hash PathSums::UpTo(Integer level) {
    for (; known < static_cast<std::size_t>(level); ++known) sums[known + 1] = sums[known] + titles[known + 1];
    return sums[static_cast<std::size_t>(level)];
}

Hash WithOwn(Hash enclosing, Integer level, std::string_view title) { return Mixed(enclosing) + HashOf(level, title); }

// The key of the titles last read at the levels of a chain.
Hash ReadHeadings(ShapeNumber shape) {
    Hash sum = Mixed(shape);
    for (; shape != 0; shape = Shapes[shape].Outer) sum += Read.At(Shapes[shape].Level);
    return sum;
}

// One heading of the present element's enclosing headings while the index is built.
struct Enclosing {
    Integer Level;
    ShapeNumber Shape;
    Hash Sum; // of it and those around it
};

ShapeNumber ShapeWith(ShapeNumber outer, Integer level,
                      std::map<std::pair<ShapeNumber, Integer>, ShapeNumber> &numbers) {
    const auto [found, isNew] = numbers.try_emplace({outer, level}, Shapes.size());
    if (isNew) Shapes.push_back({outer, level});
    return found->second;
}

void Enter(Entry &entry, Integer element) {
    if (IsGroupStart(element)) {
        if (entry.Group == 0) entry.Group = element;
    } else if (FieldRow[element] == 0) {
        entry.Members.push_back(element);
    } else if (entry.Field == 0) {
        entry.Field = element;
    }
}

// Enters an element under both of its keys: the path passed, and its enclosing headings with their sum.
void EnterTarget(Integer element, ShapeNumber shape, Hash sum) {
    const Integer level = LevelOf(element);
    const std::string &title = FieldTitle[element];
    Enter(ByPath[WithOwn(Passed.UpTo(level), level, title)], element);
    Enter(ByHeadings[WithOwn(Mixed(shape) + sum, level, title)], element);
    auto &shapes = ShapesOf[HashOf(level, title)];
    if (std::find(shapes.begin(), shapes.end(), shape) == shapes.end()) shapes.push_back(shape);
}

bool IsTarget(Integer element) { return HasValue(element) || IsGroupStart(element); }

Integer EntryAt(const std::unordered_map<Hash, Entry> &entries, Hash key, Target target, Integer group) {
    const auto found = entries.find(key);
    if (found == entries.end()) return 0;
    const Entry &entry = found->second;
    if (target == Target::Field) return entry.Field;
    if (target == Target::Group) return entry.Group;
    const auto member = std::upper_bound(entry.Members.begin(), entry.Members.end(), group);
    return member != entry.Members.end() && FieldGroup[*member] == group ? *member : Integer{0};
}

// The earlier of two elements, where 0 is none.
Integer Earlier(Integer a, Integer b) { return a == 0 || (b != 0 && b < a) ? b : a; }

} // namespace

void BuildTitleIndex() {
    ByPath.clear();
    ByHeadings.clear();
    ShapesOf.clear();
    Shapes.assign(1, {0, 0});
    Passed.Forget();
    std::vector<Enclosing> around{{-1, 0, 0}};
    std::map<std::pair<ShapeNumber, Integer>, ShapeNumber> numbers;
    for (const Integer e : Elements()) {
        const bool isGroupEnd = IsGroupEnd(e);
        const Integer level = LevelOf(isGroupEnd ? FieldGroup[e] : e);
        while (around.back().Level >= level) around.pop_back();
        if (isGroupEnd) continue; // no title, and what its group held encloses nothing behind it
        const std::string &title = FieldTitle[e];
        Passed.Put(level, HashOf(level, title));
        const auto [outerLevel, shape, sum] = around.back();
        if (IsTarget(e)) EnterTarget(e, shape, sum);
        if (IsSection(e) || IsGroupStart(e))
            around.push_back({level, ShapeWith(shape, level, numbers), sum + HashOf(level, title)});
    }
}

void ForgetTitlesRead() {
    for (auto &titles : LevelTable) titles[TitleRead].clear();
    Read.Forget();
}

void NoteTitleRead(Integer level, std::string_view title) {
    LevelTable[level][TitleRead] = title;
    Read.Put(level, HashOf(level, title));
}

Integer FindElement(Integer level, std::string_view title, Target target, Integer group) {
    const auto meant = [&](Integer element) {
        return element != 0 && LevelOf(element) == level && FieldTitle[element] == title ? element : Integer{0};
    };
    const Integer found = meant(EntryAt(ByPath, WithOwn(Read.UpTo(level), level, title), target, group));
    if (found != 0) return found;
    const auto shapes = ShapesOf.find(HashOf(level, title));
    if (shapes == ShapesOf.end()) return 0;
    Integer first = 0;
    for (const ShapeNumber shape : shapes->second)
        first = Earlier(first, meant(EntryAt(ByHeadings, WithOwn(ReadHeadings(shape), level, title), target, group)));
    return first;
}
