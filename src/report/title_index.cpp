// The index of title paths (title_index.h).
#include "report/title_index.h"

#include "model/field_model.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>
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

// A number for each title by its level, those passed and those last read; 0 is no level's. A path is the sum of the
// numbers of its titles. Two different paths of one template share a sum about as often as two files share a checksum
// of 64 bits.
std::vector<Hash> Passed;
std::vector<Hash> Read;

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

// Of the titles at levels 1 to some level.
Hash PathTo(const std::vector<Hash> &titles, Integer level) {
    return std::accumulate(titles.begin() + 1, titles.begin() + 1 + level, Hash{0});
}

// As many as there are levels, all empty.
std::vector<Hash> NoTitles() {
    std::vector<Hash> titles;
    for (int level = 0; level <= DeepestLevel; ++level) titles.push_back(HashOf(static_cast<Integer>(level), ""));
    return titles;
}

Hash WithOwn(Hash enclosing, Integer level, std::string_view title) { return Mixed(enclosing) + HashOf(level, title); }

// The key of the titles last read at the levels of a chain.
Hash ReadHeadings(ShapeNumber shape) {
    Hash sum = Mixed(shape);
    for (; shape != 0; shape = Shapes[shape].Outer) sum += Read[static_cast<std::size_t>(Shapes[shape].Level)];
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
    Enter(ByPath[WithOwn(PathTo(Passed, level), level, title)], element);
    Enter(ByHeadings[WithOwn(Mixed(shape) + sum, level, title)], element);
    auto &shapes = ShapesOf[HashOf(level, title)];
    if (std::find(shapes.begin(), shapes.end(), shape) == shapes.end()) shapes.push_back(shape);
}

bool IsTarget(Integer element) { return HasValue(element) || IsGroupStart(element); }

Integer Chosen(const std::unordered_map<Hash, Entry> &entries, Hash key, Target target, Integer group) {
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
    Passed = NoTitles();
    std::vector<Enclosing> around{{-1, 0, 0}};
    std::map<std::pair<ShapeNumber, Integer>, ShapeNumber> numbers;
    for (const Integer e : Elements()) {
        const bool isGroupEnd = IsGroupEnd(e);
        const Integer level = LevelOf(isGroupEnd ? FieldGroup[e] : e);
        while (around.back().Level >= level) around.pop_back();
        if (isGroupEnd) continue; // no title, and what its group held encloses nothing behind it
        const std::string &title = FieldTitle[e];
        Passed[static_cast<std::size_t>(level)] = HashOf(level, title);
        const auto [outerLevel, shape, sum] = around.back();
        if (IsTarget(e)) EnterTarget(e, shape, sum);
        if (IsSection(e) || IsGroupStart(e))
            around.push_back({level, ShapeWith(shape, level, numbers), sum + HashOf(level, title)});
    }
}

void ForgetTitlesRead() {
    for (auto &titles : LevelTable) titles[TitleRead].clear();
    Read = NoTitles();
}

void NoteTitleRead(Integer level, std::string_view title) {
    LevelTable[level][TitleRead] = title;
    Read[static_cast<std::size_t>(level)] = HashOf(level, title);
}

Integer FindElement(Integer level, std::string_view title, Target target, Integer group) {
    const Integer found = Chosen(ByPath, WithOwn(PathTo(Read, level), level, title), target, group);
    if (found != 0) return found;
    const auto shapes = ShapesOf.find(HashOf(level, title));
    if (shapes == ShapesOf.end()) return 0;
    Integer first = 0;
    for (const ShapeNumber shape : shapes->second)
        first = Earlier(first, Chosen(ByHeadings, WithOwn(ReadHeadings(shape), level, title), target, group));
    return first;
}
