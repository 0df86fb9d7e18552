#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>

// What can be appended to a TextBuffer: a text, a character, a whole number, which is written in decimal, or a piece
// of several parts. Such a piece either lists them
//     auto Parts() const { return std::make_tuple('(', name, ')'); }
// or writes itself: GetMostBytes() says how many bytes it takes at most, Write(p) puts it at p and returns its end.
template <class T>
concept TextPart = std::convertible_to<const T&, std::string_view>;
template <class T>
concept NumberPart = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char>;
template <class T>
concept ListedPart = requires(const T& part) { part.Parts(); };

template <class T> std::size_t GetMostBytes(const T& part)
{
    constexpr std::size_t longestNumber = 20;   // -9223372036854775808 and 18446744073709551615
    if constexpr (std::same_as<T, char>) return 1;
    else if constexpr (NumberPart<T>) return longestNumber;
    else if constexpr (TextPart<T>) return std::string_view(part).size();
    else if constexpr (ListedPart<T>)
        return std::apply([](const auto&... parts) { return (GetMostBytes(parts) + ... + 0); }, part.Parts());
    else return part.GetMostBytes();
}

// There must be room for GetMostBytes. The result is the end.
template <class T> char* WritePart(char* p, const T& part)
{
    if constexpr (std::same_as<T, char>) {
        *p = part;
        return p + 1;
    } else if constexpr (NumberPart<T>) {
        return std::to_chars(p, p + GetMostBytes(part), part).ptr;
    } else if constexpr (TextPart<T>) {
        const std::string_view text = part;
        if (!text.empty()) std::memcpy(p, text.data(), text.size());
        return p + text.size();
    } else if constexpr (ListedPart<T>) {
        return std::apply([p](const auto&... parts) mutable { return ((p = WritePart(p, parts)), ...); }, part.Parts());
    } else {
        return part.Write(p);
    }
}

// The text under construction: what is appended goes behind the rest, whatever its kind, and nothing is formatted
// twice or made a string of its own first. It owns its bytes, which keep their room when the text is cleared, and
// knows nothing of files: whoever fills it writes it out.
class TextBuffer
{
public:
    TextBuffer() = default;

    // One piece behind the other. None of them may lie in this buffer itself, which can move here.
    template <class... Pieces> void Append(const Pieces&... pieces)
    {
        const std::size_t most = (GetMostBytes(pieces) + ... + 0);
        if (m_Capacity - m_Size < most) Grow(most);
        char* p = m_Bytes.get() + m_Size;
        ((p = WritePart(p, pieces)), ...);
        m_Size = static_cast<std::size_t>(p - m_Bytes.get());
    }

    std::string_view View() const { return {m_Bytes.get(), m_Size}; }   // until the next change
    std::size_t GetSize() const { return m_Size; }
    bool IsEmpty() const { return m_Size == 0; }
    void Clear() { m_Size = 0; }
    void CutTo(std::size_t size) { m_Size = size; }                     // at most what it has

private:
    void Grow(std::size_t more);

    std::unique_ptr<char[]> m_Bytes;
    std::size_t m_Size = 0;
    std::size_t m_Capacity = 0;
};

// The same for a single text that is needed as a string.
template <class... Pieces> std::string MakeText(const Pieces&... pieces)
{
    TextBuffer text;
    text.Append(pieces...);
    return std::string(text.View());
}
