#pragma once

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

/// What the fuzz targets share. Each holds a second implementation of what it drives, written to be
/// plain rather than fast, and ends the run when the two disagree: the fuzzer then keeps the input.
namespace morvella::fuzz {

template <class Value>
void requireEqual(const Value& actual, const Value& expected, std::string_view what) {
    if (actual != expected) {
        std::cerr << what << "\n  is         " << actual << "\n  instead of " << expected << '\n';
        std::abort();
    }
}

inline void require(bool holds, std::string_view what) {
    if (!holds) {
        std::cerr << what << '\n';
        std::abort();
    }
}

/// The input as the text that it is.
inline std::string textOf(const unsigned char* data, size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

}  // namespace morvella::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size);
