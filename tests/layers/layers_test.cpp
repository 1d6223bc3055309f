// Compares the layers in the sources with the picture in docs/architecture.md.
// Including a header that a folder may not use doesn't fail the build, because a
// library's headers are visible to whatever links it, directly or not.
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

using Rooms = std::set<std::string>;
using Arrows = std::map<std::string, Rooms>; // from a folder to those it uses

const fs::path kSources = fs::path(TOLVEK_CHECKOUT) / "src";
const char* const kToolkit = "Qt";

std::string contents(const fs::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// The folder of src for a path below it. The reader of Jet files and the systems are
// folders of their own; platform isn't one.
std::string roomOf(const std::string& path)
{
    std::string room;
    for (const char* const name :
         {"platform/system", "platform/runtime", "platform/dao", "platform/dao/jet_reader",
          "platform/forms", "help", "converter", "app", "store", "filter", "reply", "friend",
          "import", "dialogs", "window", "browse", "shell", "letters", "letters/window"})
        if (path.starts_with(std::string(name) + "/") && std::string(name).size() > room.size())
            room = name;
    return room;
}

std::vector<fs::path> sourceFiles()
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(kSources))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files.push_back(entry.path());
    return files;
}

// Visits each include of a file: group 1 is the name in quotes, group 2 the name in
// angle brackets.
template <class Look> void eachInclude(const fs::path& file, Look look)
{
    static const std::regex kInclude("#include (?:\"([^\"]+)\"|<([^>]+)>)");
    const std::string text = contents(file);
    for (std::sregex_iterator found(text.begin(), text.end(), kInclude), end; found != end; ++found)
        look(found->str(1), found->str(2));
}

Arrows arrowsInTheSources()
{
    Arrows arrows;
    for (const fs::path& file : sourceFiles()) {
        const std::string room = roomOf(fs::relative(file, kSources).string());
        EXPECT_NE(room, "") << file << " is in no folder of the picture";
        Rooms& used = arrows[room];
        eachInclude(file, [&](const std::string& ours, const std::string& others) {
            if (others.starts_with("Q")) used.insert(kToolkit);
            if (const std::string to = roomOf(ours); !to.empty() && to != room) used.insert(to);
        });
    }
    return arrows;
}

// The table in the documentation: `folder -> folder folder`, as printed there.
Arrows arrowsInThePicture()
{
    Arrows arrows;
    const std::string page = contents(fs::path(TOLVEK_CHECKOUT) / "docs/architecture.md");
    const std::regex line("\n([a-z/_]+) ->([^\n]*)");
    for (std::sregex_iterator found(page.begin(), page.end(), line), end; found != end; ++found) {
        std::istringstream words(found->str(2));
        for (std::string word; words >> word;)
            arrows[found->str(1)].insert(word);
        arrows[found->str(1)];
    }
    return arrows;
}

TEST(LayersTest, AreThoseOfTheArchitecturePage)
{
    const Arrows real = arrowsInTheSources(), picture = arrowsInThePicture();
    for (const auto& [room, used] : real) {
        ASSERT_TRUE(picture.contains(room)) << room << " is missing in the table";
        EXPECT_EQ(used, picture.at(room)) << room;
    }
    EXPECT_EQ(real.size(), picture.size());
}

// Whether a folder is above another: it uses it, directly or not.
bool isAbove(const Arrows& arrows, const std::string& upper, const std::string& lower)
{
    if (upper == lower) return true;
    const auto used = arrows.find(upper);
    return used != arrows.end() && std::ranges::any_of(used->second, [&](const std::string& next) {
               return isAbove(arrows, next, lower);
           });
}

TEST(LayersTest, HaveNoCircle)
{
    const Arrows picture = arrowsInThePicture();
    for (const auto& [room, used] : picture)
        for (const std::string& lower : used)
            ASSERT_FALSE(isAbove(picture, lower, room)) << room << " and " << lower;
}

TEST(LayersTest, OnlyBrowseWindowAndShellSeeTheMainWindow)
{
    for (const auto& [room, used] : arrowsInThePicture())
        EXPECT_EQ(used.contains("window"), room == "browse" || room == "shell") << room;
}

// Each layer's test_hooks.h is for its own sources, which define the hooks, and for tests.
TEST(LayersTest, NothingButTestsSetsAHook)
{
    for (const fs::path& file : sourceFiles())
        eachInclude(file, [&](const std::string& ours, const std::string&) {
            if (!ours.ends_with("/test_hooks.h")) return;
            EXPECT_EQ(file.extension(), ".cpp") << file;
            EXPECT_EQ(roomOf(ours), roomOf(fs::relative(file, kSources).string())) << file;
        });
}

// Headers that only one system has are included only in that system's folder.
TEST(LayersTest, TheSystemsOwnHeadersStayInItsFolder)
{
    const std::regex systems("sys/.*|linux/.*|X11/.*|windows\\.h|tlhelp32\\.h|psapi\\.h|imm\\.h|"
                             "sddl\\.h|shellapi\\.h|io\\.h|unistd\\.h|fcntl\\.h|dlfcn\\.h|"
                             "poll\\.h|pthread\\.h|signal\\.h|seccomp\\.h|spawn\\.h|pwd\\.h");
    for (const fs::path& file : sourceFiles()) {
        const std::string folder = file.parent_path().string();
        if (folder.ends_with("/system/linux") || folder.ends_with("/system/windows")) continue;
        eachInclude(file, [&](const std::string&, const std::string& others) {
            EXPECT_FALSE(std::regex_match(others, systems)) << file << " includes " << others;
        });
    }
}

}
}
