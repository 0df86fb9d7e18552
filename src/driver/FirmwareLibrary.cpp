// The firmware library: Structured Text that a target description carries in base64, in the system's own bit
// order, and that is compiled in front of the user's sources.

#include "files/Base64.h"
#include "files/Format.h"
#include "files/OutputTextFile.h"
#include "files/Platform.h"
#include "files/TemporaryFiles.h"
#include "files/XmlDocument.h"
#include "semantics/Norvane.h"

static constexpr std::string_view g_LibraryPath = "COMPILER\\TARGET\\LIBRARY";
static constexpr std::string_view g_TargetPath = "COMPILER\\TARGET";
static constexpr std::size_t g_LineLength = 80;   // base64 characters in a line of a stored library

static void Trim(std::string& text)
{
    static constexpr std::string_view whiteSpace = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string::npos) {
        text.clear();
        return;
    }
    text.erase(text.find_last_not_of(whiteSpace) + 1);
    text.erase(0, first);
}

std::string CNorvane::GetFirmwareLibraryName() const
{
    return FormatText("FirmwareLibrary.~st%d", m_IsReproducible ? 0 : GetProcessNumber());
}

// A reproducible run shows a name that others show, too, so its file needs another one. Everybody else's has the name
// that is shown: what an earlier process of the same number left behind goes, but a link is not followed.
static std::string MakeLibraryFile(const std::string& name, bool isReproducible)
{
    if (isReproducible) return MakeTemporaryFile(name, GetFileMode(name.c_str()));
    if (IsRegularFileItself(name.c_str())) UnlinkFile(name.c_str());
    return MakeTemporaryFileNamed(name) ? name : std::string();
}

std::string CNorvane::ExtractFirmwareLibrary()
{
    CXmlNode* pLibrary = m_Target.m_Root.FindChild(g_LibraryPath);
    if (!pLibrary) return {};
    Trim(pLibrary->m_Text);
    if (pLibrary->m_Text.empty()) return {};

    std::string source;
    Base64Decode(pLibrary->m_Text, source);
    const std::string name = GetFirmwareLibraryName();
    // A file that can't be made, or not as a whole, is found missing when it is to be compiled.
    m_LibraryTemporary = MakeLibraryFile(name, m_IsReproducible);
    if (m_LibraryTemporary.empty()) return name;
    OutputTextFile file;
    const bool isOpen = file.Open(m_LibraryTemporary);
    file.Write(source);
    if (isOpen && file.Close()) return name;
    RemoveTemporaryFile(m_LibraryTemporary);
    m_LibraryTemporary.clear();
    return name;
}

static std::string CutIntoLines(std::string_view text)
{
    std::string lines;
    for (std::size_t i = 0; i < text.size(); i += g_LineLength) {
        lines += text.substr(i, g_LineLength);
        lines += "\r\n";
    }
    return lines;
}

bool CNorvane::StoreLibrary(std::string_view sources)
{
    CXmlDocument document;
    if (document.Load(m_LibraryFile) < 0) {
        m_Errors.ErrGeneric("Error in opening library file");
        return true;
    }
    std::string encoded;
    Base64Encode(sources, encoded);

    CXmlNode* pLibrary = document.m_Root.FindChild(g_LibraryPath);
    if (!pLibrary) {
        CXmlNode* pTarget = document.m_Root.FindChild(g_TargetPath);
        if (!pTarget) {
            m_Errors.ErrGeneric("COMPILER\\TARGET node not found in library file");
            return true;
        }
        pLibrary = pTarget->AddChild("LIBRARY");
    }
    pLibrary->m_Text = CutIntoLines(encoded);
    return document.Save(m_LibraryFile) >= 0;
}
