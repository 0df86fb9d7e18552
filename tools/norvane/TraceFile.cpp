#include "norvane/TraceFile.h"

namespace
{

//	scan,time_us,tank.level,pump
//	1,0,30,TRUE
class CCsvFile : public CTraceFile
{
public:
    void WriteHead(const std::vector<std::string>& names)
    {
        m_File << "scan,time_us";
        for (const std::string& name : names) {
            const bool isQuoted = name.find(',') != std::string::npos;   // m[1,2]
            m_File << ',' << (isQuoted ? "\"" : "") << name << (isQuoted ? "\"" : "");
        }
        m_File << '\n';
    }
    void Write(std::int64_t scan, std::int64_t microseconds, const std::vector<MachineValue>& values) override
    {
        m_File << scan << ',' << microseconds;
        for (const MachineValue& value : values) m_File << ',' << ToText(value);
        m_File << '\n';
    }
};

class CVcdFile : public CTraceFile
{
public:
    void WriteHead(const std::vector<std::string>& names, const std::vector<ValueKind>& kinds)
    {
        m_File << "$timescale 1us $end\n$scope module program $end\n";
        for (std::size_t i = 0; i < names.size(); ++i) {
            const int bits = kinds[i] == ValueKind::Bool ? 1 : GetSizeBytes(kinds[i]) * 8;
            m_File << "$var " << (IsReal(kinds[i]) ? "real " : "wire ") << bits << ' ' << Identifier(i) << ' ';
            // Brackets would be taken for a range of bits, blanks end a name.
            for (const char c : names[i]) m_File << (c == '[' ? '(' : c == ']' ? ')' : c == ' ' ? '_' : c);
            m_File << " $end\n";
        }
        m_File << "$upscope $end\n$enddefinitions $end\n";
    }
    void Write(std::int64_t, std::int64_t microseconds, const std::vector<MachineValue>& values) override
    {
        bool hasTime = false;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i < m_Last.size() && m_Last[i] == values[i]) continue;
            if (!hasTime) m_File << '#' << microseconds << '\n';
            hasTime = true;
            WriteValue(values[i], i);
        }
        m_Last = values;
    }

private:
    // Printable characters as digits, the lowest first.
    static std::string Identifier(std::size_t number)
    {
        constexpr std::size_t base = 94;
        std::string text;
        do {
            text += static_cast<char>('!' + number % base);
            number /= base;
        } while (number > 0);
        return text;
    }
    void WriteValue(const MachineValue& value, std::size_t number)
    {
        if (value.kind == ValueKind::Bool) {
            m_File << (value.integer & 1) << Identifier(number) << '\n';
            return;
        }
        if (IsReal(value.kind)) {
            m_File << 'r' << ToText(value) << ' ' << Identifier(number) << '\n';
            return;
        }
        m_File << 'b';
        for (int bit = GetSizeBytes(value.kind) * 8 - 1; bit >= 0; --bit) m_File << ((value.integer >> bit) & 1);
        m_File << ' ' << Identifier(number) << '\n';
    }

    std::vector<MachineValue> m_Last;
};

}   // namespace

bool CTraceFile::Close()
{
    m_File.close();
    return !m_File.fail();
}

std::unique_ptr<CTraceFile> CTraceFile::Create(const std::string& fileName, const std::vector<std::string>& names,
                                               const std::vector<ValueKind>& kinds, std::string& error)
{
    const bool isCsv = fileName.ends_with(".csv");
    if (!isCsv && !fileName.ends_with(".vcd")) {
        error = fileName + ": a trace is a .csv or a .vcd file";
        return nullptr;
    }
    auto pCsv = std::make_unique<CCsvFile>();
    auto pVcd = std::make_unique<CVcdFile>();
    CTraceFile* pFile = isCsv ? static_cast<CTraceFile*>(pCsv.get()) : pVcd.get();
    pFile->m_File.open(fileName, std::ios::binary);
    if (!pFile->m_File) {
        error = fileName + ": cannot be written";
        return nullptr;
    }
    if (isCsv) pCsv->WriteHead(names);
    else pVcd->WriteHead(names, kinds);
    return isCsv ? std::unique_ptr<CTraceFile>(std::move(pCsv)) : std::unique_ptr<CTraceFile>(std::move(pVcd));
}
