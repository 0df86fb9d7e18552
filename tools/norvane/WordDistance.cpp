#include "norvane/WordDistance.h"

#include <algorithm>
#include <cstdlib>

int GetDistance(std::string_view a, std::string_view b, int limit)
{
    const int difference = static_cast<int>(a.size()) - static_cast<int>(b.size());
    if (std::abs(difference) > limit) return limit + 1;
    std::vector<int> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            const bool isExchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isExchanged) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return std::min(row[b.size()], limit + 1);
}

std::string ToUpper(std::string_view word)
{
    std::string upper(word);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

bool IsSameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && ToUpper(a) == ToUpper(b);
}

std::string FindNearest(std::string_view word, const std::vector<std::string_view>& candidates)
{
    const std::string upper = ToUpper(word);
    const int limit = word.size() < 3 ? 0 : word.size() < 6 ? 1 : 2;
    int best = limit + 1;
    std::string nearest;
    for (const std::string_view candidate : candidates) {
        if (candidate == word || candidate.empty()) continue;
        const int distance = GetDistance(upper, ToUpper(candidate), limit);
        if (distance >= best) continue;
        best = distance;
        nearest = candidate;
    }
    return nearest;
}
