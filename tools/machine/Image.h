#pragma once

#include "machine/DebugInfo.h"
#include "machine/Listing.h"
#include "machine/TargetInfo.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A compiled program, loaded: listing, debug file and, if given, target description, with a place for every area in
// one memory of 24-bit addresses. An address of the machine has 32 bits; its top eight are a bit number.
//
// Variables with an address of their own lie at just this address. Behind them follow the global area, the retain
// area, the local memory of each program and the frames of functions. Gaps of unused addresses lie between them.

constexpr int g_AddressBits = 24;
constexpr std::uint32_t g_AddressMask = (1u << g_AddressBits) - 1;

struct Region
{
    std::string name;            // "global", "retain", "input", "local memory of main"
    std::uint32_t begin = 0;
    std::uint32_t size = 0;      // bytes; 0: there is none

    std::uint32_t End() const { return begin + size; }
};

struct ImageProgram
{
    std::string name;
    int pou = -1;                // position in the listing
    int region = -1;             // of its local memory
    bool isStartUp = false;      // it calls the initialisation of the globals or of the retained variables
};

// The debug file that belongs to a listing: "a.asm" gives "a.dbi", "prog" gives "prog.dbi".
std::string GetDebugFileName(const std::string& asmName);

class CImage
{
public:
    // Loads NAME.asm, the .dbi beside it and the target, if its name isn't empty. Null, with the reason in `error`,
    // if that fails.
    static std::unique_ptr<CImage> Load(const std::string& asmName, const std::string& targetName, std::string& error);
    // The same of texts in memory; without a target if its text is empty. `shownName` stands in messages.
    static std::unique_ptr<CImage> FromText(std::string asmText, std::string_view debugText, std::string_view targetText,
                                            const std::string& shownName, std::string& error);

    const Region& GetRegion(MemoryArea area, int pou) const;   // an area as the code of a POU names it; not Absolute
    const Region* FindRegion(std::uint32_t address) const;     // that the byte lies in; null if it lies in none
    const ImageProgram* FindProgram(std::string_view name) const;
    std::string GetSourceName(int file) const;                 // of a line mark

    CDebugInfo m_DebugInfo;
    CListing m_Listing;
    std::optional<CTargetInfo> m_Target;
    std::vector<Region> m_Regions;             // rising; the frames are none of them
    std::vector<ImageProgram> m_Programs;      // in the target's order, without one in the debug file's
    std::vector<int> m_ProgramOfPou;           // position in m_Programs for each POU of the listing; -1: none
    int m_GlobalRegion = -1;
    int m_RetainRegion = -1;
    std::uint32_t m_FramesBegin = 0;
    std::uint32_t m_FramesSize = 0;            // bytes of memory for frames, gaps for alignment included

private:
    bool Finish(std::string& error);
    void CollectPrograms();
    bool PlaceAbsolute(std::string& error);
    bool PlaceAreas(std::string& error);
    void AddRegion(std::string name, std::int64_t size, std::int64_t& cursor);

    Region m_NoRegion{"no memory", 0, 0};
};
