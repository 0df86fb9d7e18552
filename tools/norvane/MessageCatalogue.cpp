#include "norvane/MessageCatalogue.h"

#include <algorithm>

namespace MessageCatalogue
{

const std::vector<Entry>& GetEntries()
{
    static const std::vector<Entry> entries = {
#define MESSAGE(identifier, method, ...) {#identifier, {__VA_ARGS__}},
#include "frontend/Messages.def"
#undef MESSAGE
    };
    return entries;
}

// What a form consists of: texts, and the places between them.
struct Piece
{
    std::string_view text;
    bool isPlace = false;
};

struct Form
{
    std::string_view id;
    std::vector<Piece> pieces;
    std::size_t textLength = 0;   // of all texts: the more, the closer is a match
};

// "<name>" with a name of letters is a place.
static std::size_t GetPlaceLength(std::string_view form)
{
    if (form.front() != '<') return 0;
    const std::size_t end = form.find_first_not_of("abcdefghijklmnopqrstuvwxyz", 1);
    return end != std::string_view::npos && end > 1 && form[end] == '>' ? end + 1 : 0;
}

static Form ParseForm(std::string_view id, std::string_view form)
{
    Form parsed{id, {}, 0};
    std::size_t begin = 0;
    const auto endText = [&](std::size_t end) {
        if (end > begin) parsed.pieces.push_back({form.substr(begin, end - begin), false});
        parsed.textLength += end - begin;
    };
    for (std::size_t i = 0; i < form.size();) {
        const std::size_t length = GetPlaceLength(form.substr(i));
        if (length == 0) {
            ++i;
            continue;
        }
        endText(i);
        parsed.pieces.push_back({{}, true});
        i += length;
        begin = i;
    }
    endText(form.size());
    return parsed;
}

// With what stands in brackets, and without it; the list has no more than one pair in a form.
static std::vector<std::string> ListVariants(std::string_view form)
{
    const std::size_t open = form.find('[');
    const std::size_t close = form.find(']', open == std::string_view::npos ? 0 : open);
    if (open == std::string_view::npos || close == std::string_view::npos) return {std::string(form)};
    const std::string front(form.substr(0, open));
    const std::string back(form.substr(close + 1));
    return {front + std::string(form.substr(open + 1, close - open - 1)) + back, front + back};
}

static const std::vector<Form>& GetForms()
{
    static std::vector<std::string> texts;   // which the pieces point into
    static const std::vector<Form> forms = [] {
        std::vector<std::pair<std::string_view, std::size_t>> origins;
        for (const Entry& entry : GetEntries())
            for (const std::string_view form : entry.forms)
                for (std::string& variant : ListVariants(form)) {
                    origins.emplace_back(entry.id, texts.size());
                    texts.push_back(std::move(variant));
                }
        std::vector<Form> parsed;
        for (const auto& [id, index] : origins) parsed.push_back(ParseForm(id, texts[index]));
        return parsed;
    }();
    return forms;
}

// Each place takes as little as it can, but for the last one, behind which the text must end.
static bool Fits(const Form& form, std::string_view text, std::vector<std::string>& arguments)
{
    arguments.clear();
    bool isInPlace = false;
    for (std::size_t i = 0; i < form.pieces.size(); ++i) {
        const Piece& piece = form.pieces[i];
        if (piece.isPlace) {
            isInPlace = true;
            continue;
        }
        const bool isLast = i + 1 == form.pieces.size();
        const bool isAtEnd = isLast && isInPlace && text.size() >= piece.text.size();
        const std::size_t found = isAtEnd ? text.size() - piece.text.size() : text.find(piece.text);
        if (found == std::string_view::npos || text.substr(found, piece.text.size()) != piece.text) return false;
        if (!isInPlace && found != 0) return false;
        if (isInPlace) arguments.emplace_back(text.substr(0, found));
        text.remove_prefix(found + piece.text.size());
        isInPlace = false;
    }
    if (isInPlace) arguments.emplace_back(text);
    return isInPlace || text.empty();
}

Match Identify(std::string_view printed)
{
    Match best;
    std::size_t bestLength = 0;
    std::vector<std::string> arguments;
    for (const Form& form : GetForms()) {
        if (form.textLength <= bestLength || !Fits(form, printed, arguments)) continue;
        best = {form.id, arguments};
        bestLength = form.textLength;
    }
    return best;
}

bool GoesOn(std::string_view firstLine)
{
    std::vector<std::string> arguments;
    return std::any_of(GetForms().begin(), GetForms().end(), [&](const Form& form) {
        for (std::size_t i = 0; i < form.pieces.size(); ++i) {
            const std::size_t end = form.pieces[i].isPlace ? std::string_view::npos : form.pieces[i].text.find('\n');
            if (end == std::string_view::npos) continue;
            Form first{form.id, {form.pieces.begin(), form.pieces.begin() + static_cast<std::ptrdiff_t>(i)}, 0};
            first.pieces.push_back({form.pieces[i].text.substr(0, end), false});
            return Fits(first, firstLine, arguments);
        }
        return false;
    });
}

}   // namespace MessageCatalogue
