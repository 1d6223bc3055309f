#include "platform/system/private_folder.h"

#include "platform/system/files.h"
#include "platform/system/linux/system_failure.h"

#include <cstdlib>
#include <utility>

namespace tolvek {

std::filesystem::path makePrivateFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "Tolvek-XXXXXX").string();
    probeFile(FileOperation::Create, name);
    if (!mkdtemp(name.data())) throwSystemError(errno, name);
    return name;
}

// Relative paths don't count, by the rules for these variables.
std::filesystem::path userCacheFolder()
{
    for (const auto& [variable, below] : {std::pair{"XDG_CACHE_HOME", ""}, {"HOME", ".cache"}}) {
        const char* value = std::getenv(variable);
        const std::filesystem::path folder = value ? value : "";
        if (folder.is_absolute()) return *below ? folder / below : folder;
    }
    return {};
}

}
