#include "cli/file_head.h"

#include "cli/host.h"

namespace scan695::cli {

namespace {

constexpr size_t HEAD_BYTES = 16;
constexpr char MODULE_BEGIN = '\xE0';
constexpr char FST_MAGIC[] = "FSTA";

}  // namespace

std::string HeadOf(const std::string& path) {
    std::string head(HEAD_BYTES, '\0');
    const int descriptor = OpenForReading(path);
    const long count = descriptor == -1 ? 0 : ReadSome(descriptor, head.data(), head.size());
    if (descriptor != -1) CloseDescriptor(descriptor);
    head.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return head;
}

bool IsObject(const std::string& head) {
    return !head.empty() && BeginsObject(head[0]);
}

bool IsDatabase(const std::string& head) {
    return head.starts_with(FST_MAGIC);
}

bool BeginsObject(char byte) {
    return byte == MODULE_BEGIN;
}

bool BeginsDatabase(char byte) {
    return byte == FST_MAGIC[0];
}

}  // namespace scan695::cli
