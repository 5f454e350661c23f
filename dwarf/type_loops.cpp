#include "dwarf/type_loops.h"

#include <vector>

#include "dwarf/type_fields.h"
#include "inspector/lookup.h"

namespace scan695::dwarf {

namespace {

using inspector::Fst;

// How readers go on from a type: to write its name, or to lay it out.
enum class Way { NAME, LAYOUT };

// The types that a type refers to on the way, by slot; void where there is none.
std::vector<uint32_t> References(const Fst& fst, const TYPEINFO& type, Way way) {
    std::vector<uint32_t> references;
    const auto& u = type.u;
    if (type.type_tag == TAG_ARRAY) references = {u.array.type_index};
    if (type.type_tag == TAG_ATTRIBUTE) references = {u.pointer.type_index};
    if (type.type_tag == TAG_POINTER && way == Way::NAME) references = {u.pointer.type_index};
    if (type.type_tag == TAG_FUNCTION && way == Way::NAME) references = {u.function.type_index};
    const bool has_fields = way == Way::NAME ? type.type_tag == TAG_FUNCTION : IsComposite(type);
    if (!has_fields) return references;
    references.resize(1);
    for (const FIELDINFO& field : FieldsOf(fst, type)) references.push_back(field.type_index);
    return references;
}

// A walk into the depth, without recursion, since chains may be long.
class Walk {
  public:
    Walk(const Fst& fst, Way way, std::unordered_set<uint64_t>& cuts)
        : fst_(fst),
          way_(way),
          cuts_(cuts),
          states_(inspector::UsableEntries(fst, inspector::TYPES)) {}

    void Run() {
        for (uint32_t record = 0; record < states_.size(); ++record) {
            if (states_[record] != NEW) continue;
            Enter(record);
            while (!path_.empty()) Step();
        }
    }

  private:
    enum State : uint8_t { NEW, ON_PATH, DONE };
    struct Place {
        uint32_t record;
        uint32_t next = 0;
        std::vector<uint32_t> references;  // by slot
    };

    void Enter(uint32_t record) {
        const auto type = inspector::ReadEntry<TYPEINFO>(fst_, inspector::TYPES, record);
        states_[record] = ON_PATH;
        path_.push_back({record, 0, References(fst_, *type, way_)});
    }

    void Step() {
        Place& place = path_.back();
        if (place.next == place.references.size()) {
            states_[place.record] = DONE;
            path_.pop_back();
            return;
        }
        const uint32_t slot = place.next++;
        const auto found = inspector::FindType(fst_, place.references[slot]);
        if (!found) return;
        if (states_[found->record] == ON_PATH) {
            cuts_.insert(TypeEdge{place.record, slot}.Key());
        } else if (states_[found->record] == NEW) {
            Enter(found->record);
        }
    }

    const Fst& fst_;
    Way way_;
    std::unordered_set<uint64_t>& cuts_;
    std::vector<State> states_;
    std::vector<Place> path_;
};

}  // namespace

TypeLoops::TypeLoops(const Fst& fst) {
    Walk(fst, Way::NAME, cuts_).Run();
    Walk(fst, Way::LAYOUT, cuts_).Run();
}

}  // namespace scan695::dwarf
