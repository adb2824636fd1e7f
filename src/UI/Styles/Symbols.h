#pragma once

#include "UI/Styles/Theme.h"

#include <QBrush>
#include <QFont>
#include <QIcon>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

class QPainter;

namespace morlaine {

/// The name of a symbol that exists. A literal is checked by the compiler.
class SymbolName {
public:
    static constexpr std::array<std::string_view, 24> all{
        "arrow.down.circle",
        "arrow.right.to.line.alt",
        "arrow.up.right.square",
        "chart.donut",
        "chart.pie.fill",
        "chevron.left",
        "chevron.right",
        "desktopcomputer",
        "doc.fill",
        "doc.on.doc",
        "doc.text",
        "folder.badge.plus",
        "folder.fill",
        "house",
        "internaldrive",
        "magnifyingglass",
        "play.circle.fill",
        "plus.magnifyingglass",
        "questionmark.folder",
        "shield.dashed",
        "sidebar.leading",
        "sidebar.trailing",
        "trash",
        "xmark.circle.fill",
    };

    template <std::size_t size>
    consteval SymbolName(const char (&literal)[size]) // NOLINT(google-explicit-constructor): names are written as text
        : m_text(listed({literal, size - 1}))
    {
    }

    /// The name in a text that is known only while running. Any other text is a fault of the program and ends it.
    [[nodiscard]] static constexpr SymbolName named(std::string_view text) { return SymbolName(listed(text)); }

    [[nodiscard]] constexpr std::string_view text() const { return m_text; }

private:
    explicit constexpr SymbolName(std::string_view text) : m_text(text) {}

    [[nodiscard]] static constexpr std::string_view listed(std::string_view text)
    {
        const auto found = std::ranges::find(all, text);
        if (found == all.end()) {
            std::abort();
        }
        return *found;
    }

    std::string_view m_text; // in `all`, hence never dangling
};

/// The symbol images: drawings of one colour on a square of 24 by 24, scaled to any size and sharp on any screen. Even
/// sizes look best; 16 is what they were made for. Main thread only.
namespace Symbols {

/// An icon that takes its colour from the application's palette whenever it is painted, so that it follows the
/// appearance, and the disabled group's while the control is disabled.
[[nodiscard]] QIcon icon(SymbolName name, Theme::SystemColor color = Theme::buttonText);

/// An icon of one colour, faded while the control is disabled.
[[nodiscard]] QIcon icon(SymbolName name, const QColor& color);

/// Paints the symbol filled with `fill` (a colour or a gradient over its square) as large as fits into the middle of
/// `rect`.
void paint(QPainter& painter, const QRectF& rect, SymbolName name, const QBrush& fill);

/// The symbol as a picture `side` points wide and high for a screen with that many pixels to a point.
[[nodiscard]] QPixmap pixmap(SymbolName name, int side, double devicePixelRatio, const QBrush& fill);

/// The side in points of a symbol that stands beside text in that font.
[[nodiscard]] int sideBeside(const QFont& font);

/// The icon of the application, in the sizes that desktops ask for.
[[nodiscard]] QIcon applicationIcon();

} // namespace Symbols

} // namespace morlaine
