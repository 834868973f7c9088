#pragma once

#include <cstdint>
#include <string>

namespace morvella {

/// Whether deflating the file at `path`, of `size` bytes, is likely to make it smaller: sound,
/// pictures and archives are compressed already, and trying takes nearly all the time that packing
/// them does. Judged by samples spread over the file; a small file or one that cannot be read
/// counts as compressible.
bool isCompressible(const std::string& path, std::int64_t size);

}  // namespace morvella
