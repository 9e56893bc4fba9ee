#pragma once
// Unpacks gzip while it is read.
#include <memory>
#include <string>
#include <string_view>

#include "input/byte_source.h"

namespace depcompare {

/// Returns: whether data that begin like this are packed by gzip.
[[nodiscard]] bool looksPacked(std::string_view firstBytes);

/// Returns: what is packed in `packed`, several members one after the other. Reading throws
///          `InputError` for damaged data, data that end early, and anything behind them.
[[nodiscard]] std::unique_ptr<ByteSource> unpackedBytes(std::unique_ptr<ByteSource> packed,
                                                        std::string name);

}  // namespace depcompare
