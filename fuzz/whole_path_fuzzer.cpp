// Fuzzes the whole path from bytes to reports. Mutates documents as texts, and what differs between them
// as edits.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

#include "path_case.h"
#include "reader_fuzzing.h"
#include "whole_path.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace depcompare::fuzz {

namespace {

std::string someLetters(std::size_t count, std::minstd_rand& random) {
    std::string letters(count, firstLetter);
    for (char& letter : letters) {
        letter = static_cast<char>(firstLetter + random() % letterCount);
    }
    return letters;
}

void mutateDocuments(PathCase& mutated, std::size_t most) {
    std::string& text = mutated.documents;
    const std::size_t size = text.size();
    text.resize(std::max(size, most - std::min(most, mutated.letters.size() + 1)));
    if (text.empty()) {
        return;
    }
    auto* const bytes = reinterpret_cast<std::uint8_t*>(text.data());
    text.resize(LLVMFuzzerMutate(bytes, size, text.size()));
}

void mutate(PathCase& mutated, std::size_t most, std::minstd_rand& random) {
    std::string& letters = mutated.letters;
    if (letters.size() < settingLetters) {
        letters = std::string(settingLetters, firstLetter) + someLetters(editLetters, random);
    }
    switch (random() % 6) {
        case 0:
            letters[random() % settingLetters] = someLetters(1, random).front();
            break;
        case 1:
            letters[random() % letters.size()] = someLetters(1, random).front();
            break;
        case 2:
            if (letters.size() < settingLetters + mostEdits * editLetters) {
                letters += someLetters(editLetters, random);
            }
            break;
        case 3:
            letters.resize(settingLetters + (letters.size() - settingLetters) / 2);
            break;
        case 4:
            mutated.documents =
                edited(std::move(mutated.documents), someLetters(editLetters, random));
            break;
        default:
            mutateDocuments(mutated, most);
            break;
    }
}

}  // namespace

}  // namespace depcompare::fuzz

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    depcompare::fuzz::prepare();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    using namespace depcompare::fuzz;
    std::minstd_rand random(seed);
    PathCase mutated = PathCase::of({reinterpret_cast<const char*>(data), size});
    mutate(mutated, most, random);
    const std::string bytes = mutated.bytes();
    const std::size_t kept = std::min(bytes.size(), most);
    std::copy_n(bytes.begin(), kept, data);
    return kept;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string broken =
        depcompare::fuzz::brokenRule({reinterpret_cast<const char*>(data), size});
    if (!broken.empty()) {
        std::cerr << "broken: " << broken;
        std::abort();
    }
    return 0;
}
