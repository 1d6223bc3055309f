// tolvek_make_sample FOLDER           a PostPet folder to try the program with
// tolvek_make_sample --big N FILE     one box of N mails for benchmarks
#include "demo/big_box.h"
#include "demo/sample_folder.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

int usage()
{
    std::cerr << "tolvek_make_sample FOLDER\ntolvek_make_sample --big N FILE\n";
    return 2;
}

int run(const std::vector<std::string>& arguments)
{
    if (arguments.size() == 3 && arguments[0] == "--big") {
        const int mails = std::atoi(arguments[1].c_str());
        if (mails < 1) return usage();
        tolvek::sample::makeBigBox(arguments[2], mails);
        return 0;
    }
    if (arguments.size() != 1 || arguments[0].starts_with("-")) return usage();
    tolvek::sample::makeSampleFolder(arguments[0]);
    return 0;
}

}

int main(int count, char** values)
{
    try {
        return run(std::vector<std::string>(values + 1, values + count));
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
