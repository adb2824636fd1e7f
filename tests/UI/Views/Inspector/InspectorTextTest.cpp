#include "UI/Views/Inspector/InspectorText.h"

#include "UI/Widgets/ElidingLabel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace morlaine {
namespace {

TEST(InspectorText, FormatsDurationsAsMinutesAndSeconds)
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> cases[] = {{0, "00:00"},
                                                    {0.99, "00:00"},
                                                    {1, "00:01"},
                                                    {59.999, "00:59"},
                                                    {65, "01:05"},
                                                    {599, "09:59"},
                                                    {3'725, "62:05"},
                                                    {360'000, "6000:00"},
                                                    {-1, "00:00"},
                                                    {infinite, "00:00"},
                                                    {infinite - infinite, "00:00"}};
    for (const auto& [seconds, text] : cases) {
        EXPECT_EQ(InspectorText::formatDuration(seconds), QString::fromUtf8(text)) << seconds;
    }
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
}

TEST(ElidedLines, BreakNoQuantityThatFits)
{
    const QFont font = TextStyles::font(TextStyle::body);
    struct Case {
        const char* widest;
        const char* lines;
    };
    const Case cases[] = {{"12 files, 3", "12 files,|3 folders"},
                          {"12 GB free of 2", "12 GB free of|270.55 GB"},
                          {"270.55 G", "270.55|GB free"},
                          {"Size: Zero", "Size:|Zero KB"},
                          {"12 GB free of 270.55 GB", "12 GB free"},
                          {"IMG 2024 01 02", "IMG 2024 01 02|03 04"}};
    for (const auto& [widest, lines] : cases) {
        const int width = QFontMetrics(font).horizontalAdvance(QString::fromUtf8(widest));
        const QStringList expected = QString::fromUtf8(lines).split(QLatin1Char('|'));
        QStringList broken = elidedLines(expected.join(QLatin1Char(' ')), font, width, 9);
        std::ranges::transform(broken, broken.begin(), [](const QString& line) { return line.trimmed(); });
        EXPECT_EQ(broken.join(QLatin1Char('|')).toStdString(), lines);
    }
}

} // namespace
} // namespace morlaine
