#include "platform/system/private_folder.h"

#include "platform/system/files.h"
#include "platform/system/linux/system_failure.h"

#include <cstdlib>

namespace tolvek {

std::filesystem::path makePrivateFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "Tolvek-XXXXXX").string();
    probeFile(FileOperation::Create, name);
    if (!mkdtemp(name.data())) throwSystemError(errno, name);
    return name;
}

}
