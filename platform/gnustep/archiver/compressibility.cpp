#include "compressibility.hpp"

#include <zlib.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <vector>

namespace morvella {
namespace {

constexpr std::int64_t smallFile = 1 << 20;
constexpr int sampleCount = 8;
constexpr int sampleSize = 4096;
constexpr std::size_t samplesSize = std::size_t{sampleCount} * sampleSize;

}  // namespace

bool isCompressible(const std::string& path, std::int64_t size) {
    if (size < smallFile) {
        return true;
    }
    std::array<char, samplesSize> samples;
    std::ifstream file(path, std::ios::binary);
    for (int i = 0; i < sampleCount; ++i) {
        file.seekg((size - sampleSize) / (sampleCount - 1) * i);
        file.read(samples.data() + std::ptrdiff_t{i} * sampleSize, sampleSize);
    }
    if (!file) {
        return true;
    }
    std::vector<Bytef> deflated(compressBound(samplesSize));
    uLongf deflatedSize = deflated.size();
    compress2(deflated.data(), &deflatedSize, reinterpret_cast<const Bytef*>(samples.data()),
              samplesSize, Z_BEST_SPEED);
    return deflatedSize < samplesSize / 100 * 99;
}

}  // namespace morvella
