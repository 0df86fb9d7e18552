#pragma once

#include "norvane/Diagnostic.h"
#include "norvane/SourceText.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// What there is to say of some files, and the files' texts, to show the lines that it is about.
class CFindings
{
public:
    int Count(Severity severity) const;
    void AddSource(const std::string& name, std::unique_ptr<CSourceText> pSource);
    // Null if the file isn't among the texts.
    const CSourceText* FindSource(const std::string& name) const;

    std::vector<Diagnostic> m_Diagnostics;

private:
    std::map<std::string, std::unique_ptr<CSourceText>> m_Sources;
};
