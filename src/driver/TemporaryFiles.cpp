#include "driver/TemporaryFiles.h"

#include "files/FileSystem.h"

#include <cstdlib>
#include <vector>

// Never destroyed: the exit handler runs behind the destructors of what was made after it was registered.
static std::vector<std::string>& GetNames()
{
    static auto* pNames = new std::vector<std::string>;
    return *pNames;
}

void KeepTrackOfTemporaryFile(const std::string& name)
{
    static const bool isRegistered = std::atexit(RemoveTemporaryFiles) == 0;
    static_cast<void>(isRegistered);
    GetNames().push_back(name);
}

void ForgetTemporaryFile(const std::string& name)
{
    std::erase(GetNames(), name);
}

void RemoveTemporaryFiles()
{
    for (const std::string& name : GetNames()) RemoveFile(name);
    GetNames().clear();
}
