#include "codegen/RealText.h"

#include "files/Format.h"

#include <charconv>
#include <cmath>
#include <string>

template <typename Number> static bool IsReadBack(const std::string& text, Number value)
{
    Number read = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), read);
    return result.ec == std::errc() && read == value;
}

bool SurvivesSixDecimals(double value, std::int32_t sizeBits)
{
    constexpr std::int32_t bitsOfFloat = 32;
    if (!std::isfinite(value)) return true;
    const bool isFloat = sizeBits <= bitsOfFloat;
    // Beyond the type; what is lost there isn't the decimals.
    if (isFloat && std::isinf(static_cast<float>(value))) return true;
    const std::string text = FormatReal(value);
    return isFloat ? IsReadBack(text, static_cast<float>(value)) : IsReadBack(text, value);
}
