#pragma once
// Decompresses gzip while it is read.
#include <memory>
#include <string>
#include <string_view>

#include "input/byte_source.h"

namespace depcompare {

/// Returns: whether data that begin like this are compressed by gzip.
[[nodiscard]] bool looksPacked(std::string_view firstBytes);

/// Returns: the decompressed content of `packed`, which may have several members. Reading throws
///          `InputError` for corrupt or truncated data, and for anything after them.
[[nodiscard]] std::unique_ptr<ByteSource> unpackedBytes(std::unique_ptr<ByteSource> packed,
                                                        std::string name);

}  // namespace depcompare
