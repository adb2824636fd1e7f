#include "Utilities/ShownText.h"

#include "Utilities/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace morlaine {

namespace {

constexpr char32_t zeroWidthNonJoiner = U'\u200C';
constexpr char32_t zeroWidthJoiner = U'\u200D';
constexpr char32_t leftToRightMark = U'\u200E';
constexpr char32_t keycap = U'\u20E3';
constexpr char32_t objectReplacement = U'\uFFFC';
constexpr char32_t lastMongolianSelector = U'\u180F';
constexpr char32_t lastOfAscii = U'\u007F';

bool has(char32_t c, UProperty property)
{
    return u_hasBinaryProperty(static_cast<UChar32>(c), property) != 0;
}

bool isInvisible(char32_t c)
{
    switch (u_charType(static_cast<UChar32>(c))) {
    case U_CONTROL_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
    case U_SURROGATE:
        return true;
    case U_FORMAT_CHAR:
        return !has(c, UCHAR_PREPENDED_CONCATENATION_MARK); // visible: signs that enclose a number
    default:
        return c == objectReplacement || has(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) ||
               has(c, UCHAR_NONCHARACTER_CODE_POINT);
    }
}

/// Whether the shape of a letter depends on its neighbours, as in Arabic and Mongolian.
bool joins(char32_t c, bool forwards)
{
    const int type = u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_JOINING_TYPE);
    return type == U_JT_DUAL_JOINING || type == U_JT_LEFT_JOINING || (!forwards && type == U_JT_RIGHT_JOINING);
}

bool isVirama(char32_t c)
{
    constexpr int viramaClass = 9;
    return u_getCombiningClass(static_cast<UChar32>(c)) == viramaClass;
}

bool isRightToLeft(char32_t c)
{
    const UCharDirection direction = u_charDirection(static_cast<UChar32>(c));
    return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC || direction == U_ARABIC_NUMBER;
}

/// The characters around a position; 0 where there is none.
struct Surroundings {
    char32_t base = 0;   // the last one that is neither a combining mark nor an emoji modifier
    char32_t before = 0; // the previous one
    char32_t after = 0;

    void passOver(char32_t c)
    {
        const int type = u_charType(static_cast<UChar32>(c));
        if (type != U_NON_SPACING_MARK && type != U_ENCLOSING_MARK && !has(c, UCHAR_EMOJI_MODIFIER)) {
            base = c;
        }
        before = c;
    }
};

/// Whether an invisible character changes the look of its neighbours in a way that writing needs.
bool isNeeded(char32_t c, const Surroundings& around)
{
    if (c == zeroWidthNonJoiner) {
        return isVirama(around.before) || (joins(around.base, false) && joins(around.after, false));
    }
    if (c == zeroWidthJoiner) {
        return isVirama(around.before) || joins(around.base, true) ||
               (has(around.base, UCHAR_EXTENDED_PICTOGRAPHIC) && has(around.after, UCHAR_EXTENDED_PICTOGRAPHIC));
    }
    if (!has(c, UCHAR_VARIATION_SELECTOR)) {
        return false;
    }
    if (c <= lastMongolianSelector) {
        return joins(around.before, false);
    }
    return has(around.before, UCHAR_IDEOGRAPHIC) ||
           (has(around.before, UCHAR_EMOJI) && (around.before > lastOfAscii || around.after == keycap));
}

bool isPrintableAscii(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7F; });
}

/// The character that begins at `position`; 0 at the end.
char32_t characterAt(QStringView text, qsizetype position)
{
    if (position >= text.size()) {
        return 0;
    }
    const QChar first = text[position];
    const bool isPair = first.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(first, text[position + 1]) : first.unicode();
}

qsizetype unitsOf(char32_t c)
{
    return QChar::requiresSurrogates(c) ? 2 : 1;
}

bool runsRightToLeft(QStringView text)
{
    qsizetype position = 0;
    while (position < text.size() && !isRightToLeft(characterAt(text, position))) {
        position += unitsOf(characterAt(text, position));
    }
    return position < text.size();
}

/// Calls `visit(shown, exact)` for each character of `text` and for each mark that is inserted behind a slash.
template <typename Visit>
void visitCharacters(QStringView text, bool isPath, Visit visit)
{
    const bool isMarked = isPath && runsRightToLeft(text);
    Surroundings around;
    qsizetype next = 0;
    for (qsizetype position = 0; position < text.size(); position = next) {
        const char32_t c = characterAt(text, position);
        next = position + unitsOf(c);
        around.after = characterAt(text, next);
        const char32_t shown = isInvisible(c) && !isNeeded(c, around) ? char32_t{QChar::ReplacementCharacter} : c;
        around.passOver(shown);
        visit(QChar::fromUcs4(shown), text.sliced(position, next - position));
        if (isMarked && c == U'/') {
            visit(QChar::fromUcs4(leftToRightMark), QStringView());
        }
    }
}

QString shown(QStringView text, bool isPath)
{
    if (isPrintableAscii(text)) {
        return text.toString();
    }
    QString result;
    result.reserve(text.size());
    visitCharacters(text, isPath, [&result](QStringView character, QStringView /*exact*/) { result += character; });
    return result;
}

} // namespace

QString shownText(QStringView text)
{
    return shown(text, false);
}

QString shownText(std::string_view utf8)
{
    return shown(textOfUtf8(utf8), false);
}

QString shownPath(QStringView path)
{
    return shown(path, true);
}

QString shownPath(std::string_view utf8)
{
    return shown(textOfUtf8(utf8), true);
}

QString exactPartOfPath(QStringView path, qsizetype begin, qsizetype end)
{
    QString part;
    qsizetype position = 0;
    visitCharacters(path, true, [&](QStringView character, QStringView exact) {
        if (position >= begin && position < end) {
            part += exact;
        }
        position += character.size();
    });
    return part;
}

} // namespace morlaine
