#include "samples/layout.h"

#include <algorithm>
#include <stdexcept>

namespace scan695::samples {

using namespace builder;

namespace {

[[noreturn]] void Fail(const std::string& what, const std::string& name) {
    throw std::runtime_error(what + ": " + name);
}

// Instructions for `size` bytes, chosen by a running number that the caller keeps.
Bytes Filler(const Target& target, uint32_t size, uint32_t& seed) {
    Bytes code;
    while (code.size() < size) {
        seed = seed * 1664525 + 1013904223;
        for (size_t i = seed >> 16;; ++i) {
            const Bytes& next = target.instructions[i % target.instructions.size()];
            if (code.size() + next.size() > size) continue;
            code += next;
            break;
        }
    }
    return code;
}

using Cells = std::vector<std::optional<uint8_t>>;

// How often the `period` bytes at `at` come in a row.
uint32_t RepeatCount(const Cells& cells, size_t at, size_t period) {
    size_t end = at + period;
    while (end < cells.size() && cells[end] && cells[end] == cells[end - period]) ++end;
    return static_cast<uint32_t>((end - at) / period);
}

// Load records for one stretch without gaps: repeats of a byte or of an aligned word where they
// pay, else up to 128 bytes each.
Bytes LoadStretch(const Cells& cells) {
    constexpr uint32_t WORTHWHILE = 6;
    constexpr size_t RECORD = 128;
    Bytes records;
    Bytes pending;
    const auto flush = [&] {
        if (!pending.empty()) records += Load(pending);
        pending = {};
    };
    for (size_t at = 0; at < cells.size();) {
        const size_t period = RepeatCount(cells, at, 1) >= 4 * WORTHWHILE ? 1 : 4;
        const bool fits = at % period == 0 && at + period <= cells.size();
        const uint32_t count = fits ? RepeatCount(cells, at, period) : 0;
        if (count < WORTHWHILE) {
            pending += {*cells[at++]};
            if (pending.size() == RECORD) flush();
            continue;
        }
        flush();
        Bytes once;
        for (size_t i = 0; i < period; ++i) once += {*cells[at + i]};
        records += Repeat(count) + Load(once);
        at += count * period;
    }
    flush();
    return records;
}

}  // namespace

uint32_t CodeSize(const Function& function) {
    uint32_t size = 0;
    for (const Step& step : function.steps) size += step.bytes;
    return size;
}

Layout::Layout(const Program& program) : program_(program), images_(program.segments.size()) {
    PlaceModules();
    PlaceSegments();
    LoadCode();
    LoadVariables();
    LoadVectors();
}

uint32_t Layout::Address(const std::string& name) const {
    const auto place = places_.find(name);
    if (place == places_.end()) Fail("no such function or variable", name);
    const auto& [segment, offset] = place->second;
    return images_[SegmentNumber(segment) - 1].base + offset;
}

uint32_t Layout::StepAddress(const Function& function, int step) const {
    const size_t steps = step == Home::END ? function.steps.size() : static_cast<size_t>(step);
    if (steps > function.steps.size()) Fail("step behind the end", function.name);
    uint32_t address = Address(function.name);
    for (size_t i = 0; i < steps; ++i) address += function.steps[i].bytes;
    return address;
}

uint32_t Layout::SegmentNumber(const std::string& segment) const {
    for (uint32_t i = 0; i < program_.segments.size(); ++i) {
        if (program_.segments[i].name == segment) return i + 1;
    }
    Fail("no such segment", segment);
}

uint32_t Layout::ModuleShare(const std::string& module, const std::string& segment) const {
    const auto share = shares_.find({module, segment});
    return share == shares_.end() ? 0 : share->second;
}

void Layout::Place(const std::string& module, const std::string& name, const std::string& segment,
                   uint32_t size) {
    Cells& cells = ImageOf(segment).bytes;
    const uint32_t alignment = program_.target.alignment;
    const size_t offset = (cells.size() + alignment - 1) / alignment * alignment;
    if (!places_.emplace(name, std::pair(segment, static_cast<uint32_t>(offset))).second) {
        Fail("placed twice", name);
    }
    shares_[{module, segment}] += static_cast<uint32_t>(offset + size - cells.size());
    cells.resize(offset + size);
}

void Layout::PlaceModules() {
    for (const Module& module : program_.modules) {
        for (const Function& function : module.functions) {
            Place(module.name, function.name, module.code_segment, CodeSize(function));
        }
        for (const Variable& variable : module.variables) {
            Place(module.name, variable.name, variable.segment, variable.size);
        }
    }
    uint32_t vectors = 0;
    for (const Vector& vector : program_.vectors) {
        vectors = std::max(vectors, vector.first + vector.count);
    }
    ImageOf(program_.vector_segment).bytes.resize(vectors * program_.vector_size);
}

void Layout::PlaceSegments() {
    uint32_t behind = 0;
    for (size_t i = 0; i < images_.size(); ++i) {
        const Segment& segment = program_.segments[i];
        for (uint32_t n = 0; n < segment.fill_count; ++n) {
            for (const uint8_t byte : segment.fill) images_[i].bytes.emplace_back(byte);
        }
        images_[i].base =
            segment.base == Segment::BEHIND ? behind : static_cast<uint32_t>(segment.base);
        behind = images_[i].base + static_cast<uint32_t>(images_[i].bytes.size());
    }
}

void Layout::Store(const std::string& segment, uint32_t address, const Bytes& bytes) {
    Image& image = ImageOf(segment);
    const size_t offset = address - image.base;
    if (offset + bytes.size() > image.bytes.size()) Fail("contents behind the end", segment);
    std::copy(bytes.begin(), bytes.end(),
              image.bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

void Layout::LoadCode() {
    const Target& target = program_.target;
    for (const Module& module : program_.modules) {
        for (const Function& function : module.functions) {
            const uint32_t address = Address(function.name);
            uint32_t seed = address;
            Bytes code;
            for (const Step& step : function.steps) {
                const bool last = &step == &function.steps.back();
                const uint32_t here = address + static_cast<uint32_t>(code.size());
                Bytes line = step.call.empty() ? Bytes{} : target.call(here, Address(step.call));
                const Bytes end = last ? target.return_instruction : Bytes{};
                if (line.size() + end.size() > step.bytes) Fail("line too short", function.name);
                const auto rest = static_cast<uint32_t>(step.bytes - line.size() - end.size());
                code += line + Filler(target, rest, seed) + end;
            }
            Store(module.code_segment, address, code);
        }
    }
}

void Layout::LoadVariables() {
    for (const Module& module : program_.modules) {
        for (const Variable& variable : module.variables) {
            if (variable.contents.size() > variable.size) Fail("contents too long", variable.name);
            Store(variable.segment, Address(variable.name), variable.contents);
        }
    }
}

void Layout::LoadVectors() {
    const uint32_t base = ImageOf(program_.vector_segment).base;
    for (const Vector& vector : program_.vectors) {
        for (uint32_t i = 0; i < vector.count; ++i) {
            const uint32_t address = base + (vector.first + i) * program_.vector_size;
            Store(program_.vector_segment, address,
                  program_.target.jump(address, Address(vector.handler)));
        }
    }
}

Bytes Layout::SegmentPart() const {
    Bytes part;
    for (size_t i = 0; i < images_.size(); ++i) {
        const samples::Segment& segment = program_.segments[i];
        part += builder::Segment(i + 1, segment.memory, segment.name, images_[i].base,
                                 images_[i].bytes.size());
    }
    return part;
}

// A segment starts at its base; an LoadAt record leads each further stretch.
Bytes Layout::DataPart() const {
    Bytes part;
    for (size_t i = 0; i < images_.size(); ++i) {
        const Cells& cells = images_[i].bytes;
        auto at = std::find_if(cells.begin(), cells.end(), [](auto& cell) { return cell; });
        if (at == cells.end()) continue;
        part += UseSegment(i + 1);
        while (at != cells.end()) {
            const auto offset = static_cast<uint32_t>(at - cells.begin());
            if (offset > 0) part += LoadAt(i + 1, images_[i].base + offset);
            const auto gap = std::find(at, cells.end(), std::nullopt);
            part += LoadStretch(Cells(at, gap));
            at = std::find_if(gap, cells.end(), [](auto& cell) { return cell; });
        }
    }
    return part;
}

}  // namespace scan695::samples
