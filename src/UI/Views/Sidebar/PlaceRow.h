#pragma once

#include "UI/Styles/Symbols.h"
#include "UI/Views/State/FavoriteFolder.h"
#include "UI/Views/State/VolumeInfo.h"

#include <QPushButton>

#include <optional>

namespace morlaine {

/// A place that can be scanned: a frameless button of the sidebar's width. It can show a cue at its end, for which it
/// always reserves room.
class PlaceRow final : public QPushButton {
    Q_OBJECT

public:
    explicit PlaceRow(const VolumeInfo& volume, QWidget* parent = nullptr);
    explicit PlaceRow(const FavoriteFolder& folder, QWidget* parent = nullptr);

    /// Of the volume or folder.
    [[nodiscard]] const Uuid& id() const { return m_id; }

    /// How much of a volume is used, 0...100.
    [[nodiscard]] std::optional<double> percentUsed() const
    {
        return m_usage ? std::optional(m_usage->fraction * 100) : std::nullopt;
    }

    [[nodiscard]] bool isCueShown() const { return m_isCueShown; }
    void setCueShown(bool isShown);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    /// The pointer has entered or left the row, enabled or not.
    void hoverChanged(bool isUnderPointer);

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Usage {
        double fraction; // 0...1
        QString caption;
    };

    PlaceRow(const Uuid& id, const std::string& name, SymbolName symbol, QWidget* parent);
    [[nodiscard]] QFont nameFont() const;
    [[nodiscard]] QRect mirrored(const QRect& place) const;
    [[nodiscard]] QStringList captionLines(int rowWidth) const;
    [[nodiscard]] QPalette currentPalette() const;
    void paintSymbol(QPainter& painter) const;
    void paintCue(QPainter& painter) const;
    void paintUsage(QPainter& painter, const QRect& area) const;
    void paintTexts(QPainter& painter) const;

    Uuid m_id;
    QString m_name;
    SymbolName m_symbol;
    std::optional<Usage> m_usage; // volumes only
    bool m_isCueShown = false;
};

} // namespace morlaine
