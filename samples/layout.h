// The linker's half of a sample: where everything lies and the bytes that are loaded there.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "samples/firmware.h"

namespace scan695::samples {

class Layout {
  public:
    explicit Layout(const Program& program);

    uint32_t Address(const std::string& name) const;
    // The begin of a step, Home::END for the byte behind the function.
    uint32_t StepAddress(const Function& function, int step) const;
    uint32_t SegmentNumber(const std::string& segment) const;  // from 1
    // Bytes of a module's part of a segment.
    uint32_t ModuleShare(const std::string& module, const std::string& segment) const;

    Bytes SegmentPart() const;
    Bytes DataPart() const;

  private:
    struct Image {
        std::vector<std::optional<uint8_t>> bytes;  // none where nothing is loaded
        uint32_t base = 0;
    };

    void PlaceModules();
    void PlaceSegments();
    void LoadCode();
    void LoadVariables();
    void LoadVectors();
    void Place(const std::string& module, const std::string& name, const std::string& segment,
               uint32_t size);
    void Store(const std::string& segment, uint32_t address, const Bytes& bytes);
    Image& ImageOf(const std::string& segment) { return images_[SegmentNumber(segment) - 1]; }

    const Program& program_;
    std::vector<Image> images_;
    std::map<std::string, std::pair<std::string, uint32_t>> places_;  // segment, offset
    std::map<std::pair<std::string, std::string>, uint32_t> shares_;  // of module and segment
};

uint32_t CodeSize(const Function& function);

}  // namespace scan695::samples
