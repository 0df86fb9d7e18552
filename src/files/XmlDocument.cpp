#include "files/XmlDocument.h"

#include "files/FileReplacement.h"
#include "files/FileSystem.h"
#include "files/TextFile.h"
#include "files/XmlParser.h"
#include "files/XmlReview.h"
#include "files/XmlWriter.h"

namespace
{

constexpr int g_XmlError = static_cast<int>(0x80004005);   // the one failure that callers see

}   // namespace

int CXmlDocument::Load(const std::string& fileName, XmlReview* pReview)
{
    if (pReview) pReview->Begin({});
    TextFile file;
    if (file.Open(fileName, TextFile::ForReading, m_Encoding) != 0) return g_XmlError;
    return Load(file, pReview);
}

int CXmlDocument::Load(TextFile& file, XmlReview* pReview)
{
    std::string text;
    if (file.ReadAll(text) == g_FileError) return g_XmlError;
    return LoadFromString(text, pReview);
}

int CXmlDocument::LoadFromString(std::string_view text, XmlReview* pReview)
{
    Clear();
    if (pReview) pReview->Begin({});
    if (text.empty() || text.front() == '\0') return g_XmlError;
    const int result = XmlParser(*this, text, pReview).Parse();
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
    // Kept (files): only the formatted form writes its line feeds as they are.
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

// All or nothing, but for a device or a pipe.
static bool SaveDocument(CXmlDocument& document, const std::string& fileName, XmlWriter::Form form)
{
    FileReplacement replacement;
    if (replacement.Prepare(fileName)) {
        if (!WriteDocument(document, replacement.GetWorkName(), form)) return false;
        if (replacement.TakePlace()) return true;
    }
    // A file that we may write to in a directory that takes no new one, or of somebody else.
    return IsWritableFile(fileName) && WriteInPlace(document, fileName, form);
}

int CXmlDocument::Save(const std::string& fileName)
{
    return SaveDocument(*this, fileName, XmlWriter::Form::Formatted) ? 0 : g_XmlError;
}

int CXmlDocument::SaveCompact(const std::string& fileName)
{
    return SaveDocument(*this, fileName, XmlWriter::Form::Compact) ? 0 : g_XmlError;
}
