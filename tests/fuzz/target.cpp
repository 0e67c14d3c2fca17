#include "tests/fuzz/target.h"

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstring>
#include <string>

using fuzz::kTarget;

// The engine's mutator of bytes. It is weak because without an engine nothing calls it.
extern "C" __attribute__((weak)) std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size,
                                                              std::size_t capacity);

namespace {

std::string_view Text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Mutates the text after the head by its grammar. For half of the seeds the engine mutates the
// whole input instead, and for some of the others it mutates the head too.
std::size_t Mutated(std::uint8_t* data, std::size_t size, std::size_t capacity, std::uint32_t seed,
                    std::string_view donor) {
    const std::size_t head = kTarget.head;
    if (size <= head || seed % 2 == 0) return LLVMFuzzerMutate(data, size, capacity);
    if (seed % 16 == 1) LLVMFuzzerMutate(data, head, head);
    const std::string_view input = Text(data, size);
    const std::string_view text = input.substr(head);
    const std::string mutated = fuzz::Mutate(text, donor.empty() ? text : donor,
                                             kTarget.grammar(input), seed / 2, capacity - head);
    std::copy(mutated.begin(), mutated.end(), data + head);
    return head + mutated.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const char* const locale = std::setlocale(LC_CTYPE, "C.UTF-8");
    static_cast<void>(locale);
    kTarget.check(Text(data, size));
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t capacity, unsigned int seed) {
    return Mutated(data, size, capacity, seed, {});
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* out, std::size_t capacity,
                                                 unsigned int seed) {
    const std::size_t head = kTarget.head;
    if (firstSize <= head || secondSize <= head || firstSize > capacity) return 0;
    std::memcpy(out, first, firstSize);
    return Mutated(out, firstSize, capacity, seed | 1, Text(second, secondSize).substr(head));
}
