#include "files/XmlDocument.h"

#include "files/FileSystem.h"
#include "files/TextFile.h"
#include "files/XmlParser.h"
#include "files/XmlWriter.h"

#include <filesystem>
#include <system_error>

namespace
{

constexpr int g_XmlError = static_cast<int>(0x80004005);   // the one failure that callers see

}   // namespace

int CXmlDocument::Load(const std::string& fileName)
{
    TextFile file;
    std::string text;
    if (file.Open(fileName, TextFile::ForReading, m_Encoding) != 0) return g_XmlError;
    if (file.ReadAll(text) == g_FileError) return g_XmlError;
    return LoadFromString(text);
}

int CXmlDocument::LoadFromString(std::string_view text)
{
    Clear();
    if (text.empty() || text.front() == '\0') return g_XmlError;
    const int result = XmlParser(*this, text).Parse();
    return result == XmlParsed ? 0 : g_XmlError;
}

void CXmlDocument::Clear()
{
    m_Root.Clear();
    m_Prolog.Clear();
}

void CXmlDocument::GetXml(std::string& text)
{
    XmlWriter(*this, XmlWriter::Form::Compact, nullptr).Write();
    text.swap(m_Out);
    m_Out.clear();
}

void CXmlDocument::GetFormattedXml(std::string& text)
{
    XmlWriter(*this, XmlWriter::Form::Formatted, nullptr).Write();
    text.swap(m_Out);
    m_Out.clear();
}

static bool WriteDocument(CXmlDocument& document, const std::string& fileName, XmlWriter::Form form)
{
    // Kept: only the formatted form writes its line feeds as they are.
    const int translation = form == XmlWriter::Form::Formatted ? TextFile::NoLineEndTranslation : 0;
    const int flags = document.m_Encoding | TextFile::NoBom | translation;
    constexpr int bufferSize = 65536;
    TextFile file;
    if (file.Open(fileName, TextFile::ForWriting, flags, bufferSize) != 0) return false;
    const bool isWritten = XmlWriter(document, form, &file).Write();
    const bool isClosed = file.Close() == 0;
    return isWritten && isClosed;
}

// For a file in a directory that takes no new one. A failure puts the earlier content back, as far as the
// disk lets us: it needs no more room than it had.
static bool WriteInPlace(CXmlDocument& document, const std::string& fileName, XmlWriter::Form form)
{
    std::string earlier;
    const bool isKept = ReadWholeFile(fileName, earlier);
    if (WriteDocument(document, fileName, form)) return true;
    if (!isKept) return false;
    constexpr int asItIs = TextFile::Ansi | TextFile::NoBom | TextFile::NoLineEndTranslation;
    TextFile file;
    if (file.Open(fileName, TextFile::ForWriting, asItIs) != 0) return false;
    file.WriteString(earlier);
    return false;
}

// The file that a link leads to, so that the link stays one.
static std::string FollowLinks(const std::string& fileName)
{
    std::error_code error;
    if (!std::filesystem::is_symlink(fileName, error)) return fileName;
    const std::filesystem::path target = std::filesystem::canonical(fileName, error);
    return error ? fileName : target.string();
}

static bool IsRegularFile(const std::string& fileName)
{
    std::error_code error;
    return std::filesystem::is_regular_file(fileName, error);
}

static void CopyPermissions(const std::string& from, const std::string& to)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(from, error);
    if (!error && std::filesystem::exists(status)) std::filesystem::permissions(to, status.permissions(), error);
}

// All or nothing: the text goes to a new file beside the target, which takes the target's place when it
// is complete.
static bool SaveDocument(CXmlDocument& document, const std::string& givenName, XmlWriter::Form form)
{
    const std::string fileName = FollowLinks(givenName);
    const bool isThere = FileExists(fileName);
    if (isThere && !IsWritableFile(fileName)) return false;
    if (isThere && !IsRegularFile(fileName)) return WriteDocument(document, fileName, form);   // a device or pipe

    const std::string temporaryName = MakeTemporaryName(fileName);
    TextFile probe;
    if (probe.Open(temporaryName, TextFile::ForWriting, TextFile::Ansi) != 0)
        return isThere && WriteInPlace(document, fileName, form);
    probe.Close();

    if (!WriteDocument(document, temporaryName, form)) {
        RemoveFile(temporaryName);
        return false;
    }
    CopyPermissions(fileName, temporaryName);
    if (ReplaceFile(temporaryName, fileName)) return true;
    RemoveFile(temporaryName);
    return isThere && WriteInPlace(document, fileName, form);   // a file of somebody else's that we may write to
}

int CXmlDocument::Save(const std::string& fileName)
{
    return SaveDocument(*this, fileName, XmlWriter::Form::Formatted) ? 0 : g_XmlError;
}

int CXmlDocument::SaveCompact(const std::string& fileName)
{
    return SaveDocument(*this, fileName, XmlWriter::Form::Compact) ? 0 : g_XmlError;
}
