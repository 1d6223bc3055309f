#include "platform/system/process.h"
#include "support/probe_log.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {

TEST(SharedLibraryTest, RunsAFunctionOfALoadedLibrary)
{
    const SharedLibrary library(TOLVEK_SAMPLE_LIBRARY);
    const auto function = reinterpret_cast<int (*)(int)>(library.symbol("tolvekSample"));
    EXPECT_EQ(function(41), 42);
}

TEST(SharedLibraryTest, TellsWhatIsMissing)
{
    TempFolder folder;
    EXPECT_EQ(failureOf([&] { SharedLibrary(folder / "none.so"); }),
              std::errc::no_such_file_or_directory);
    const SharedLibrary library(TOLVEK_SAMPLE_LIBRARY);
    EXPECT_EQ(failureOf([&] { library.symbol("noSuchFunction"); }),
              std::errc::function_not_supported);
}

TEST(SharedLibraryTest, AFileThatIsNoLibraryIsNotAMissingOne)
{
    TempFolder folder;
    writeBytes(folder / "text.so", "no library");
    EXPECT_EQ(failureOf([&] { SharedLibrary(folder / "text.so"); }),
              std::errc::executable_format_error);
}

TEST(SharedLibraryTest, ABareNameIsNotLookedForInTheSystemsFolders)
{
    EXPECT_EQ(failureOf([] { SharedLibrary("libc.so.6"); }), std::errc::no_such_file_or_directory);
}

TEST(SharedLibraryTest, HasTheSystemsFormOfName)
{
    EXPECT_EQ(SharedLibrary::fileName("Tolvek"), "libTolvek.so");
}

}
