#include "files/XmlEntities.h"

#include <cstddef>

namespace
{

struct XmlEntity
{
    unsigned char nByte;
    std::string_view named;
    std::string_view decimal;
    std::string_view hexadecimal;    // upper-case digits only; empty: there is none
};

constexpr XmlEntity g_Entities[] = {
    {'<', "&lt;", "&#60;", "&#x3C;"},
    {'>', "&gt;", "&#62;", "&#x3E;"},
    {'"', "&quot;", "&#34;", "&#x22;"},
    {'&', "&amp;", "&#38;", "&#x26;"},
    {'\'', "&apos;", "&#39;", ""},
    // Wanted (targets): the non-breaking space becomes a plain blank.
    {' ', "&nbsp;", "&#160;", "&#xA0;"},
    {0x80, "&euro;", "&#8364;", "&#x20AC;"},
    {0xA3, "&pound;", "&#163;", "&#xA3;"},
    {0xA7, "&sect;", "&#167;", "&#xA7;"},
    {0xB0, "&deg;", "&#176;", "&#xB0;"},
    {0xB2, "&sup2;", "&#178;", "&#xB2;"},
    {0xB5, "&micro;", "&#181;", "&#xB5;"},
    {0xE0, "&agrave;", "&#224;", "&#xE0;"},
    {0xE7, "&ccedil;", "&#231;", "&#xE7;"},
    {0xE8, "&egrave;", "&#232;", "&#xE8;"},
    {0xE9, "&eacute;", "&#233;", "&#xE9;"},
    {0xEC, "&igrave;", "&#236;", "&#xEC;"},
    {0xF2, "&ograve;", "&#242;", "&#xF2;"},
    {0xF9, "&ugrave;", "&#249;", "&#xF9;"},
};

}   // namespace

// The entity of that spelling, from "&" to ";"; null if it isn't known.
static const XmlEntity* FindEntity(std::string_view spelling)
{
    for (const XmlEntity& entity : g_Entities)
        if (spelling == entity.named || spelling == entity.decimal || spelling == entity.hexadecimal) return &entity;
    return nullptr;
}

std::string DecodeEntities(std::string_view text)
{
    std::string decoded;
    decoded.reserve(text.size());
    for (;;) {
        const std::size_t start = text.find('&');
        const std::size_t end = start == std::string_view::npos ? start : text.find(';', start);
        if (end == std::string_view::npos) break;
        const std::string_view spelling = text.substr(start, end + 1 - start);
        const XmlEntity* pEntity = FindEntity(spelling);
        decoded += text.substr(0, start);
        // A kept entity is passed over whole, another "&" inside it included.
        if (pEntity) decoded.push_back(static_cast<char>(pEntity->nByte));
        else decoded += spelling;
        text.remove_prefix(end + 1);
    }
    decoded += text;
    return decoded;
}

// The entity that a byte is written as in any place; empty if it stays as it is.
static std::string_view GetEncoding(char c)
{
    switch (c) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    default: break;
    }
    constexpr unsigned char firstAbove = 0x80;
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < firstAbove) return {};
    for (const XmlEntity& entity : g_Entities)
        if (entity.nByte == byte) return entity.decimal;
    return {};
}

void AppendEncoded(std::string& output, std::string_view text, XmlPlace place)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isBeforeHash = i + 1 < text.size() && text[i + 1] == '#';
        std::string_view encoding = GetEncoding(c);
        if (c == '&' && !isBeforeHash) encoding = "&amp;";
        if (c == '"' && place == XmlPlace::AttributeValue) encoding = "&quot;";
        if (encoding.empty()) output.push_back(c);
        else output += encoding;
    }
}
