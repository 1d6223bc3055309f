// Runs a target on each file of the folders, and on copies that are truncated or have
// a few bytes changed, the same in every run.
//
//     TARGET FOLDER...
#include "fuzz/fuzz_target.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kChanges = 12;

std::vector<std::filesystem::path> filesOf(const char* folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void give(const std::string& bytes)
{
    // An exact copy, so that the sanitizer detects a read beyond its end.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

void giveChanged(std::string bytes, std::mt19937& random)
{
    if (bytes.empty()) return;
    for (unsigned count = random() % 4; count > 0; --count)
        bytes[random() % bytes.size()] = static_cast<char>(random());
    if (random() % 3 == 0) bytes.resize(random() % bytes.size());
    give(bytes);
}

}

int main(int argc, char** argv)
{
    std::mt19937 random(19971126);
    std::size_t inputs = 0;
    for (int at = 1; at < argc; ++at)
        for (const auto& file : filesOf(argv[at])) {
            const std::string bytes = contentOf(file);
            give(bytes);
            for (int change = 0; change < kChanges; ++change)
                giveChanged(bytes, random);
            ++inputs;
        }
    std::printf("%zu files\n", inputs);
    return inputs == 0 ? 1 : 0;
}
