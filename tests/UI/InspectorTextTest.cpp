#include "UI/Views/InspectorText.h"

#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "UI/Views/ElidingLabel.h"

#include <gmock/gmock.h>

#include <limits>

namespace morlaine {
namespace {

using testing::ElementsAre;
using testing::Field;

auto row(const char* label, const char* value)
{
    using InspectorText::Row;
    return testing::AllOf(Field(&Row::label, QString::fromUtf8(label)), Field(&Row::value, QString::fromUtf8(value)));
}

TEST(InspectorText, FormatsDurationsAsMinutesAndSeconds)
{
    struct Case {
        double seconds;
        const char* text;
    };
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const Case cases[] = {{0, "00:00"},
                          {0.99, "00:00"},
                          {1, "00:01"},
                          {59.999, "00:59"},
                          {65, "01:05"},
                          {599, "09:59"},
                          {3'725, "62:05"},
                          {360'000, "6000:00"},
                          {-1, "00:00"},
                          {infinite, "00:00"},
                          {std::numeric_limits<double>::quiet_NaN(), "00:00"}};
    for (const Case& c : cases) {
        EXPECT_EQ(InspectorText::formatDuration(c.seconds), QString::fromUtf8(c.text)) << c.seconds;
    }
}

TEST(InspectorText, ShowsARunningScanBeforeWhatIsSelected)
{
    using InspectorText::Panel;
    EXPECT_EQ(InspectorText::panelFor(true, true), Panel::scanning);
    EXPECT_EQ(InspectorText::panelFor(true, false), Panel::scanning);
    EXPECT_EQ(InspectorText::panelFor(false, true), Panel::node);
    EXPECT_EQ(InspectorText::panelFor(false, false), Panel::empty);
}

TEST(InspectorText, ShowsTheRowsThatApply)
{
    const FileNode root = test::treeFromText("root/\n"
                                             "  a.jpg 7000\n"
                                             "  inner/\n"
                                             "    b.txt 1000\n");
    const FileNode file = test::nodeNamed(root, "b.txt");
    const FileNode nothing = test::treeFromText("nothing/");

    EXPECT_THAT(InspectorText::rowsFor(root, root), ElementsAre(row("Size", "8 KB"), row("Share of Scan", "100.00%"),
                                                                row("Total Items", "2 files, 2 folders")));
    EXPECT_THAT(InspectorText::rowsFor(file, root), ElementsAre(row("Size", "1 KB"), row("Share of Scan", "12.50%")));
    EXPECT_THAT(InspectorText::rowsFor(file, std::nullopt), ElementsAre(row("Size", "1 KB")));
    EXPECT_THAT(InspectorText::rowsFor(nothing, nothing),
                ElementsAre(row("Size", "Zero KB"), row("Total Items", "0 files, 1 folders")))
        << "there is no share of nothing";
}

TEST(ElidedLines, FillTheWidthAndKeepTheEnd)
{
    const QFont font = TextStyles::font(TextStyle::body);
    const QFontMetrics metrics(font);
    const int width = metrics.horizontalAdvance(QStringLiteral("twenty characters or"));
    const QString names[] = {QStringLiteral("short.txt"), QStringLiteral("a name of several words that wraps.jpeg"),
                             QString(250, QLatin1Char('w')) + QStringLiteral(".tar.gz"), QString()};
    for (const QString& name : names) {
        for (const int maxLines : {1, 2, 3}) {
            const QStringList lines = elidedLines(name, font, width, maxLines);
            EXPECT_LE(lines.size(), maxLines);
            for (const QString& line : lines) {
                EXPECT_LE(metrics.horizontalAdvance(line.trimmed()), width) << line.toStdString();
            }
            const QString shown = lines.join(QString());
            const bool isWhole = shown == name;
            EXPECT_EQ(isWhole, !shown.contains(QChar(u'\u2026'))) << shown.toStdString();
            EXPECT_TRUE(shown.endsWith(name.right(4))) << shown.toStdString();
        }
    }
    EXPECT_EQ(elidedLines(names[0], font, width, 1), QStringList(names[0]));
    EXPECT_GT(elidedLines(names[1], font, width, 3).size(), 1);
    EXPECT_EQ(elidedLines(QStringLiteral("a\nb"), font, width, 2), QStringList(QStringLiteral("a\uFFFDb")))
        << "a line break in a name is a character like others";
}

} // namespace
} // namespace morlaine
