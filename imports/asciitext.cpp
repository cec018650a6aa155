#include "imports/asciitext.h"

#include "fit/numberscanner.h"

#include <algorithm>
#include <array>

namespace imports
{
namespace
{

struct Spelling {
    std::string_view character; // UTF-8
    std::string_view ascii;
};

constexpr std::array kSpellings{
    Spelling{"\u00a0", " "}, Spelling{"\u2007", " "},   Spelling{"\u2008", " "}, Spelling{"\u2009", " "},
    Spelling{"\u200a", " "}, Spelling{"\u202f", " "},   Spelling{"\u2012", "-"}, Spelling{"\u2013", "-"},
    Spelling{"\u2212", "-"}, Spelling{"\u2018", "'"},   Spelling{"\u2019", "'"}, Spelling{"\u02bc", "'"},
    Spelling{"\u00d7", "x"}, Spelling{"\u00b7", "x"},   Spelling{"\u22c5", "x"}, Spelling{"*", "x"},
    Spelling{"\u00b5", "u"}, Spelling{"\u03bc", "u"},   Spelling{"\u2080", "0"}, Spelling{"\u2081", "1"},
    Spelling{"\u2082", "2"}, Spelling{"\u2083", "3"},   Spelling{"τ", "tau"},    Spelling{"Φ", "phi"},
    Spelling{"φ", "phi"},    Spelling{"\u03d5", "phi"}, Spelling{"α", "alpha"},  Spelling{"λ", "lambda"},
    Spelling{"\u200e", ""},  Spelling{"\u200b", ""},    Spelling{"\ufeff", ""},
};

// Exponents: the first character of a run follows "^".
constexpr std::array kRaised{
    Spelling{"⁰", "0"}, Spelling{"¹", "1"}, Spelling{"²", "2"}, Spelling{"³", "3"},
    Spelling{"⁴", "4"}, Spelling{"⁵", "5"}, Spelling{"⁶", "6"}, Spelling{"⁷", "7"},
    Spelling{"⁸", "8"}, Spelling{"⁹", "9"}, Spelling{"⁻", "-"}, Spelling{"⁺", "+"},
};

template <class Spellings>
const Spelling* spellingAt(const Spellings& spellings, std::string_view text)
{
    const auto found =
        std::ranges::find_if(spellings, [text](const Spelling& one) { return text.starts_with(one.character); });
    return found == spellings.end() ? nullptr : &*found;
}

bool isPlain(char c) { return (static_cast<unsigned char>(c) & 0x80U) == 0 && c != '*'; }

} // namespace

std::string asciiText(std::string_view utf8)
{
    std::string text;
    bool raised = false;
    while (!utf8.empty()) {
        if (const char c = utf8.front(); isPlain(c)) { // nearly all are
            text += c;
            utf8.remove_prefix(1);
            raised = false;
            continue;
        }
        const Spelling* exponent = spellingAt(kRaised, utf8);
        const Spelling* other = exponent ? exponent : spellingAt(kSpellings, utf8);
        if (exponent && !raised)
            text += '^';
        raised = exponent;
        text += other ? other->ascii : utf8.substr(0, 1);
        utf8.remove_prefix(other ? other->character.size() : 1);
    }
    return text;
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(fit::kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(fit::kBlanks) + 1);
}

} // namespace imports
