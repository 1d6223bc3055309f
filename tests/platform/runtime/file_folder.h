// A folder for one test, by the name that the program's texts use, and one
// operation that fails.
#pragma once
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <system_error>
#include <vector>

namespace tolvek::test {

class FileFolderTest : public testing::Test {
protected:
    ~FileFolderTest() override { hooks::setFileProbe({}); }

    void given(const std::string& name, const std::string& bytes = "")
    {
        std::filesystem::create_directories((folder / name).parent_path());
        writeBytes(folder / name, bytes);
    }
    void protect(const std::string& name)
    {
        std::filesystem::permissions(folder / name, std::filesystem::perms(0444));
    }
    std::string contents(const std::string& name) const { return readBytes(folder / name); }
    std::vector<std::string> everything() const
    {
        std::vector<std::string> names = entryNames(folder.path());
        std::sort(names.begin(), names.end());
        return names;
    }
    Text text(TextView name) const { return joinPath(pathText(folder.path()), name); }

    static void breakOperation(FileOperation failing, std::errc code)
    {
        hooks::setFileProbe([failing, code](FileOperation operation, const std::filesystem::path&) {
            if (operation == failing) throw std::system_error(std::make_error_code(code));
        });
    }

    TempFolder folder;
};

}
