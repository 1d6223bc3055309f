// Broken inputs for the converter's tests.
#pragma once
#include <cstddef>
#include <random>
#include <string>

namespace tolvek::test {

// Changes, removes or doubles up to a dozen bytes and pieces.
inline std::string mutated(std::string bytes, std::mt19937& random)
{
    static const std::string kSpice =
        std::string("\x1b\x0e\x0f\x1a\r\n\"()<>=?:;,'", 17) + '\0' + "\x82\x81\xFF";
    for (auto times = random() % 12 + 1; times > 0 && !bytes.empty(); --times) {
        const std::size_t at = random() % bytes.size();
        switch (random() % 4) {
        case 0:
            bytes[at] = static_cast<char>(random());
            break;
        case 1:
            bytes[at] = kSpice[random() % kSpice.size()];
            break;
        case 2:
            bytes.erase(at, random() % 9);
            break;
        default:
            bytes.insert(at, bytes.substr(random() % bytes.size(), random() % 40));
        }
    }
    return bytes;
}

inline std::string repeated(const std::string& piece, std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += piece;
    return text;
}

}
