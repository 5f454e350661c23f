#include "ask/layouts.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "ask/names.h"
#include "inspector/lists.h"
#include "inspector/reader.h"

namespace scan695::ask {

using inspector::FindType;
using inspector::FoundType;
using inspector::Fst;
using inspector::ReadEntry;

namespace {

constexpr int MAX_STEPS = 64;  // through pointers, arrays and attributes to a layout

std::string_view TagOf(const Fst& fst, const TYPEINFO& type) {
    const uint32_t offset = type.type_tag == TAG_ENUMERATION ? type.u.enumeration.name_offs
                                                             : type.u.structunion.name_offs;
    return inspector::NameAt(fst, offset).value_or("");
}

Member MemberOf(const Fst& fst, const FIELDINFO& field) {
    Member member;
    member.name = inspector::NameAt(fst, field.name_offs).value_or("");
    member.type_index = field.type_index;
    member.value = field.value;
    member.begin_bit = uint64_t{field.value} * 8;
    const auto found = FindType(fst, field.type_index);
    member.is_bitfield = found && found->type.type_tag == TAG_BITFIELD;
    if (member.is_bitfield) {
        // Both are signed; a place in front of the struct is none.
        const auto& bits = found->type.u.bits;
        member.begin_bit += static_cast<uint64_t>(std::max<int>(bits.displacement, 0));
        member.bits = static_cast<uint64_t>(std::max<int>(bits.nof_bits, 0));
    } else {
        member.bits = uint64_t{inspector::SizeOfType(fst, field.type_index).value_or(0)} * 8;
    }
    return member;
}

void FindHoles(Layout& layout) {
    std::vector<std::pair<uint64_t, uint64_t>> covered;
    for (const Member& member : layout.members)
        if (member.bits != 0)
            covered.emplace_back(member.begin_bit, member.begin_bit + member.bits);
    std::sort(covered.begin(), covered.end());
    const uint64_t end = uint64_t{layout.size} * 8;
    covered.emplace_back(end, end);
    uint64_t at = 0;
    for (const auto& [first, behind] : covered) {
        if (first > at && at < end)
            layout.holes.push_back(
                {at / 8, static_cast<uint32_t>(at % 8), std::min(first, end) - at});
        at = std::max(at, behind);
    }
}

// The struct, union or enumeration that a member's type leads to.
std::optional<FoundType> Behind(const Fst& fst, uint32_t type_index) {
    for (int step = 0; step < MAX_STEPS; ++step) {
        const auto found = FindType(fst, type_index);
        if (!found) return {};
        switch (found->type.type_tag) {
            case TAG_POINTER:
            case TAG_ATTRIBUTE:
                type_index = found->type.u.pointer.type_index;
                break;
            case TAG_ARRAY:
                type_index = found->type.u.array.type_index;
                break;
            case TAG_STRUCT:
            case TAG_UNION:
            case TAG_ENUMERATION:
                return found;
            case TAG_NONE:
            case TAG_BITFIELD:
            case TAG_FUNCTION:
                return {};
        }
    }
    return {};
}

template <class Use>
void ForEachLayoutType(const Fst& fst, Use use) {
    for (uint64_t i = 0; i < UsableEntries(fst, inspector::TYPE_INDEX); ++i) {
        const uint32_t number = *ReadEntry<uint32_t>(fst, inspector::TYPE_INDEX, i);
        const auto type = ReadEntry<TYPEINFO>(fst, inspector::TYPES, number);
        if (type && HasLayout(*type)) use(FoundType{number, *type});
    }
}

// Collects layouts, equal ones once.
class LayoutSet {
  public:
    explicit LayoutSet(const Fst& fst) : fst_(fst), lists_(TypeLists(fst)) {}

    void Add(const FoundType& found) {
        if (!seen_.insert(found.record).second) return;
        const inspector::ListPlace list = inspector::ListOf(found.type);
        if (list.count != 0 && !lists_.Find(list)) return;
        // Copies of a type differ in their index alone.
        std::string contents(reinterpret_cast<const char*>(&found.type.u), sizeof found.type.u);
        contents += static_cast<char>(found.type.type_tag);
        const auto [copy, is_first] = records_.try_emplace(std::move(contents), layouts_.size());
        if (!is_first) {
            layouts_[copy->second].types.push_back(found.type.here_type_index);
            return;
        }
        Layout layout = LayoutOf(fst_, found);
        const auto [place, is_new] =
            places_.try_emplace(layout.text + std::to_string(layout.size), layouts_.size());
        if (is_new) {
            layouts_.push_back(std::move(layout));
        } else {
            copy->second = place->second;
            layouts_[place->second].types.push_back(found.type.here_type_index);
        }
    }

    // Adds what the members of those that are there lead to.
    void AddReached() {
        for (size_t i = 0; i < layouts_.size(); ++i) {
            std::vector<uint32_t> reached;
            if (layouts_[i].found.type.type_tag == TAG_ENUMERATION) continue;
            for (const Member& member : layouts_[i].members) reached.push_back(member.type_index);
            for (const uint32_t type_index : reached)
                if (const auto found = Behind(fst_, type_index)) Add(*found);
        }
    }

    std::vector<Layout> Take() { return std::move(layouts_); }

  private:
    const Fst& fst_;
    inspector::ListSet lists_;  // a layout whose list lies over another is damage
    std::vector<Layout> layouts_;
    std::unordered_set<uint32_t> seen_;                // records
    std::unordered_map<std::string, size_t> records_;  // by what stands in them
    std::unordered_map<std::string, size_t> places_;
};

}  // namespace

bool HasLayout(const TYPEINFO& type) {
    return type.type_tag == TAG_STRUCT || type.type_tag == TAG_UNION ||
           type.type_tag == TAG_ENUMERATION;
}

Layout LayoutOf(const Fst& fst, const FoundType& found) {
    Layout layout;
    layout.found = found;
    layout.types = {found.type.here_type_index};
    layout.size = inspector::SizeOfType(fst, found.type.here_type_index).value_or(0);
    const bool is_items = found.type.type_tag == TAG_ENUMERATION;
    const auto& u = found.type.u;
    const uint32_t list = is_items ? u.enumeration.field_offs : u.structunion.field_offs;
    const uint32_t count =
        inspector::StoredElements(is_items ? u.enumeration.nof_elem : u.structunion.nof_elem);
    for (uint32_t i = 0; list != 0 && i < count; ++i) {
        FIELDINFO field;
        if (!inspector::ReadAt(fst, list + uint64_t{i} * sizeof field, field)) break;
        if (is_items) {
            Member& item = layout.members.emplace_back();
            item.name = inspector::NameAt(fst, field.name_offs).value_or("");
            item.value = field.value;
        } else {
            layout.members.push_back(MemberOf(fst, field));
        }
    }
    if (!is_items) FindHoles(layout);
    layout.text = LayoutText(fst, layout);
    return layout;
}

std::vector<Layout> AllLayouts(const Fst& fst) {
    LayoutSet set(fst);
    ForEachLayoutType(fst, [&](const FoundType& found) { set.Add(found); });
    return set.Take();
}

std::vector<Layout> NamedLayouts(const Fst& fst, const std::string& name) {
    LayoutSet set(fst);
    const bool is_number = name.find_first_not_of("0123456789") == std::string::npos;
    if (is_number && name.size() < 10) {
        const auto found = FindType(fst, static_cast<uint32_t>(std::stoul("0" + name)));
        if (found && HasLayout(found->type)) set.Add(*found);
    } else {
        Match best = Match::PATTERN;
        std::vector<FoundType> matching;
        std::string_view tag = name;
        uint8_t kind = 0;
        for (const auto& [word, wanted] : {std::pair("struct ", TAG_STRUCT),
                                           {"union ", TAG_UNION},
                                           {"enum ", TAG_ENUMERATION}}) {
            if (!tag.starts_with(word)) continue;
            tag.remove_prefix(std::string_view(word).size());
            kind = wanted;
            break;
        }
        ForEachLayoutType(fst, [&](const FoundType& found) {
            if (kind != 0 && found.type.type_tag != kind) return;
            const Match match = MatchOf(TagOf(fst, found.type), tag);
            if (match > best) return;
            if (match < best) matching.clear();
            best = match;
            matching.push_back(found);
        });
        for (const FoundType& found : matching) set.Add(found);
    }
    set.AddReached();
    return set.Take();
}

}  // namespace scan695::ask
