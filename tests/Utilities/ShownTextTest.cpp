#include "Utilities/ShownText.h"

#include <gtest/gtest.h>

namespace morlaine {
namespace {

using namespace Qt::StringLiterals;

TEST(ShownText, MarksWhatIsInvisibleAndKeepsWhatWritingNeeds)
{
    const struct {
        const char* what;
        QString name;
        QString shown; // empty if it equals the name
    } cases[] = {
        {"turned around", u"photo\u202Egpj.exe"_s, u"photo\uFFFDgpj.exe"_s},
        {"isolates and marks of direction", u"a\u2066b\u2069\u200E\u200F\u061C"_s,
         u"a\uFFFDb\uFFFD\uFFFD\uFFFD\uFFFD"_s},
        {"lines", u"a\nb\tc\x7F\u0085\u2028\u2029"_s, u"a\uFFFDb\uFFFDc\uFFFD\uFFFD\uFFFD\uFFFD"_s},
        {"of no width", u"\uFEFFa\u200Bb\u00ADc\u2060"_s, u"\uFFFDa\uFFFDb\uFFFDc\uFFFD"_s},
        {"fillers and no characters", u"\u3164\u034F\uFFFC\uFDD0"_s, u"\uFFFD\uFFFD\uFFFD\uFFFD"_s},
        {"tags, one mark a character", u"\U0001F3F4\U000E0067\U000E007F"_s, u"\U0001F3F4\uFFFD\uFFFD"_s},
        {"joiners between Latin letters", u"a\u200Cb\u200Dc"_s, u"a\uFFFDb\uFFFDc"_s},
        {"joiners beside one emoji", u"\U0001F469\u200Da\u200D\U0001F469"_s, u"\U0001F469\uFFFDa\uFFFD\U0001F469"_s},
        {"joiners in a row and at an end", u"\u0645\u06CC\u200C\u200C\u062E\u200C"_s,
         u"\u0645\u06CC\uFFFD\uFFFD\u062E\uFFFD"_s},
        {"selectors behind letters and digits", u"a\uFE0F1\uFE0F"_s, u"a\uFFFD1\uFFFD"_s},
        {"accents and other scripts", u"caf\u00E9 e\u0301 \u65E5\u672C \u05E9\u05DC\u05D5\u05DD.txt"_s, {}},
        {"Persian",
         u"\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645 \u06A9\u0627\u0631\u200C\u0647\u0627 \u0647\u200D"_s,
         {}},
        {"Hindi", u"\u0915\u094D\u200D \u0915\u094D\u200C\u0937"_s, {}},
        {"marks above and around", u"\u0645\u064E\u200C\u062E \u0645\u20DD\u200C\u062E"_s, {}},
        {"letters that join on one side", u"\u0631\u200D \uA872\u200D"_s, u"\u0631\uFFFD \uA872\u200D"_s},
        {"emoji", u"\U0001F469\U0001F3FD\u200D\U0001F4BB \u2764\uFE0F\u200D\U0001F525 1\uFE0F\u20E3"_s, {}},
        {"ideographs and Mongolian letters", u"\u845B\U000E0100 \u1820\u180B\u1820\u180F"_s, {}},
        {"a sign that encloses a number", u"\u0600\u0661"_s, {}},
    };
    for (const auto& [what, name, shown] : cases) {
        const QString expected = shown.isEmpty() ? name : shown;
        EXPECT_EQ(shownText(name).toStdString(), expected.toStdString()) << what;
        EXPECT_EQ(shownText(name.toStdString()).toStdString(), expected.toStdString()) << what;
    }
}

TEST(ShownText, KeepsFoldersInOrderAndFindsTheExactPartOfAPath)
{
    const QString path = u"/\u05D0/\u05D1/1\n\U000E0041x"_s;
    const QString shown = shownPath(path);
    EXPECT_EQ(shown.toStdString(), u"/\u200E\u05D0/\u200E\u05D1/\u200E1\uFFFD\uFFFDx"_s.toStdString());
    EXPECT_EQ(shownPath(u"/caf\u00E9/b"_s), u"/caf\u00E9/b"_s);
    EXPECT_EQ(shownPath(u"/\u0645"_s), u"/\u200E\u0645"_s);
    EXPECT_EQ(shownPath(u"/\u0661"_s), u"/\u200E\u0661"_s);
    EXPECT_EQ(shownText(QStringView(u"half\U0001F600").chopped(1)), u"half\uFFFD"_s);
    EXPECT_EQ(exactPartOfPath(path, 0, shown.size()), path);
    EXPECT_EQ(exactPartOfPath(path, shown.size() - 3, shown.size()), path.right(4));
    EXPECT_EQ(exactPartOfPath(path, 2, 3), path.mid(1, 1));
}

} // namespace
} // namespace morlaine
