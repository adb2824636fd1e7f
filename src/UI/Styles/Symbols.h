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

/// The name of an existing symbol. A literal is checked at compile time.
class SymbolName {
public:
    static constexpr std::array<std::string_view, 25> all{
        "arrow.down.circle",
        "arrow.right.to.line.alt",
        "arrow.up.right.square",
        "chart.donut",
        "chart.pie.fill",
        "chevron.left",
        "chevron.right",
        "chevron.up",
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

    /// Converts a text that is known at run time only. An unknown name is a programming error and ends the program.
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

    std::string_view m_text; // points into `all`, so it never dangles
};

/// The symbol images: single-colour drawings on a square of 24 by 24, scaled to any size and sharp on any screen. Even
/// sizes look best; they are designed for 16. Main thread only.
namespace Symbols {

/// An icon in a colour of the application's palette. The colour is looked up at each paint, so that it follows the
/// appearance, and that of the disabled group is used for a disabled control.
[[nodiscard]] QIcon icon(SymbolName name, Theme::SystemColor color = Theme::buttonText);

/// An icon of a fixed colour, faded for a disabled control.
[[nodiscard]] QIcon icon(SymbolName name, const QColor& color);

/// Paints the symbol centred in `rect`, as large as it fits. `fill` is a colour, or a gradient over the symbol's
/// square.
void paint(QPainter& painter, const QRectF& rect, SymbolName name, const QBrush& fill);

/// The symbol as a pixmap of `side` by `side` points for a screen of that pixel ratio.
[[nodiscard]] QPixmap pixmap(SymbolName name, int side, double devicePixelRatio, const QBrush& fill);

/// The size, in points, of a symbol beside text of that font.
[[nodiscard]] int sideBeside(const QFont& font);

/// `side` points, of a design for usual fonts, larger where the application's font is larger than those.
[[nodiscard]] int grown(int side);

/// The application's icon in the usual sizes.
[[nodiscard]] QIcon applicationIcon();

} // namespace Symbols

} // namespace morlaine
