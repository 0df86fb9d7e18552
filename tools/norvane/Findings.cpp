#include "norvane/Findings.h"

#include <algorithm>

int CFindings::Count(Severity severity) const
{
    return static_cast<int>(std::count_if(m_Diagnostics.begin(), m_Diagnostics.end(),
                                          [&](const Diagnostic& d) { return d.severity == severity; }));
}

void CFindings::AddSource(const std::string& name, std::unique_ptr<CSourceText> pSource)
{
    m_Sources.emplace(name, std::move(pSource));
}

const CSourceText* CFindings::FindSource(const std::string& name) const
{
    const auto found = m_Sources.find(name);
    return found == m_Sources.end() ? nullptr : found->second.get();
}
