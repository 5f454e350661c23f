#include "ask/line_search.h"

#include <algorithm>

#include "inspector/lookup.h"

namespace scan695::ask {

using inspector::ReadEntry;

namespace {

std::string_view SourceOf(const inspector::Fst& fst, const inspector::Slice& slice) {
    const auto module =
        ReadEntry<MODULEINFO>(fst, inspector::MODULES, static_cast<uint32_t>(slice.module));
    const auto name = module ? inspector::NameAt(fst, module->source_offs) : std::nullopt;
    return name.value_or("");
}

std::optional<FoundLine> LineOf(const inspector::Fst& fst, uint64_t entry) {
    const auto number = ReadEntry<uint32_t>(fst, inspector::LINE_NUMBER_INDEX, entry);
    const auto line = number ? ReadEntry<LINEINFO>(fst, inspector::LINES, *number) : std::nullopt;
    if (!line) return {};
    return FoundLine{*number, *line};
}

}  // namespace

std::vector<uint32_t> LineSearch::SlicesOf(std::string_view source) {
    if (!slices_) {
        slices_ = inspector::LineSlices(fst_);
        for (uint32_t i = 0; i < slices_->size(); ++i)
            table_.push_back({NameKey(SourceOf(fst_, (*slices_)[i])), i});
        std::stable_sort(table_.begin(), table_.end(),
                         [](const Entry& a, const Entry& b) { return a.key < b.key; });
    }
    std::vector<uint32_t> found;
    Match best = Match::ANY_CASE;
    const uint32_t key = NameKey(source);
    auto at =
        std::lower_bound(table_.begin(), table_.end(), key,
                         [](const Entry& entry, uint32_t sought) { return entry.key < sought; });
    for (; at != table_.end() && at->key == key; ++at) {
        const std::string_view name = SourceOf(fst_, (*slices_)[at->slice]);
        if (name.empty() || CompareNames(name, source) != 0) continue;
        const Match match = name == source ? Match::EXACT : Match::ANY_CASE;
        if (match > best) continue;
        if (match < best) found.clear();
        best = match;
        found.push_back(at->slice);
    }
    return found;
}

SourceLines LineSearch::Find(std::string_view source, uint32_t line) {
    SourceLines answer;
    for (const uint32_t number : SlicesOf(source)) {
        const inspector::Slice& slice = (*slices_)[number];
        answer.has_source = true;
        const uint64_t end = slice.entry + slice.count;
        uint64_t at = inspector::LowerBound(
            fst_, inspector::LINE_NUMBER_INDEX, slice.entry, end, [&](uint32_t record) {
                const auto found = ReadEntry<LINEINFO>(fst_, inspector::LINES, record);
                return found && found->number < line;
            });
        for (; at < end; ++at) {
            const auto found = LineOf(fst_, at);
            if (!found) break;
            if (found->line.number != line) {
                if (!answer.next || found->line.number < *answer.next)
                    answer.next = found->line.number;
                break;
            }
            answer.lines.push_back(*found);
        }
    }
    if (!answer.lines.empty()) answer.next.reset();
    return answer;
}

}  // namespace scan695::ask
