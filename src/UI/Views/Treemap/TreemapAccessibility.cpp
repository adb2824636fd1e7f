#include "UI/Views/Treemap/TreemapAccessibility.h"

#include "UI/Styles/Conversions.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "UI/Widgets/AccessibleItems.h"
#include "UI/Widgets/InstallAccessible.h"
#include "Utilities/ShownText.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace morlaine::TreemapAccessibility {

namespace {

/// One rectangle of one layout. Becomes invalid when the canvas shows another layout.
class Item final : public AccessibleItem {
public:
    Item(TreemapCanvas& canvas, std::size_t position)
        : AccessibleItem(canvas, QAccessible::ListItem)
        , m_canvas(canvas)
        , m_layoutNumber(canvas.layoutNumber())
        , m_position(position)
    {
    }

    std::size_t position() const { return m_position; }

    bool isValid() const override { return m_layoutNumber == m_canvas.layoutNumber(); }

    QAccessible::State state() const override
    {
        const bool isSelected = isValid() && m_canvas.selectedPosition() == m_position;
        QAccessible::State state = AccessibleItem::state();
        state.selectable = true;
        state.selected = isSelected;
        state.focusable = true;
        state.focused = isSelected && m_canvas.hasFocus();
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names{pressAction()};
        if (isValid() && m_canvas.layout().items()[m_position].isFolder()) {
            names.append(zoomAction());
        }
        return names;
    }

protected:
    QString name() const override { return shownText(item().node.name()); }
    QString value() const override { return QString::fromStdString(item().node.formattedSize()); }
    QRect place() const override { return toQRectF(item().rect).toAlignedRect(); }

    void act(const QString& action) override
    {
        if (action == pressAction()) {
            Q_EMIT m_canvas.rectPressed(m_position);
        } else {
            Q_EMIT m_canvas.rectZoomed(m_position);
        }
    }

private:
    static QString zoomAction() { return QStringLiteral("Zoom In"); }

    TreemapRect item() const { return m_canvas.layout()[m_position]; }

    TreemapCanvas& m_canvas;
    const int m_layoutNumber;
    const std::size_t m_position;
};

void announceLayout(TreemapCanvas& canvas)
{
    QAccessibleEvent event(&canvas, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

/// Reports events of the canvas to assistive technology. Qt makes it on the first request for the canvas.
class List final : public AccessibleItems {
public:
    explicit List(TreemapCanvas& canvas)
        : AccessibleItems(canvas, QAccessible::List)
        , m_canvas(canvas)
        , m_layoutShown(
              QObject::connect(&canvas, &TreemapCanvas::layoutShown, &canvas, [&canvas] { announceLayout(canvas); }))
        , m_selectionMoved(
              QObject::connect(&canvas, &TreemapCanvas::selectionMoved, &canvas, [this] { announceSelection(); }))
    {
    }
    ~List() override
    {
        QObject::disconnect(m_layoutShown);
        QObject::disconnect(m_selectionMoved);
    }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    int childCount() const override { return static_cast<int>(offered().size()); }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        const QPoint point = m_canvas.mapFromGlobal(QPoint(x, y));
        return childFor(m_canvas.layout().hitTest(point.x(), point.y()));
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const auto* const item = dynamic_cast<const Item*>(child);
        return item != nullptr && item->isValid() ? indexFor(item->position()) : -1;
    }

    QAccessibleInterface* focusChild() const override
    {
        return m_canvas.hasFocus() ? childFor(m_canvas.selectedPosition()) : nullptr;
    }

    /// The index of the child for a rectangle of the layout; -1 if there is none.
    int indexFor(std::optional<std::size_t> position) const
    {
        if (!position || !isOffered(*position)) {
            return -1;
        }
        return static_cast<int>(std::ranges::lower_bound(offered(), *position) - offered().begin());
    }

protected:
    QAccessibleInterface* makeItem(int index) const override
    {
        return new Item(m_canvas, offered()[static_cast<std::size_t>(index)]);
    }

private:
    bool isOffered(std::size_t position) const
    {
        return TreemapDecisions::isLargeEnoughToPointAt(m_canvas.layout().items()[position].rect);
    }

    void announceSelection() const
    {
        const int selected = indexFor(m_canvas.selectedPosition());
        if (selected < 0) {
            return;
        }
        for (const QAccessible::Event kind : {QAccessible::Selection, QAccessible::Focus}) {
            if (kind != QAccessible::Focus || m_canvas.hasFocus()) {
                QAccessibleEvent event(&m_canvas, kind);
                event.setChild(selected);
                QAccessible::updateAccessibility(&event);
            }
        }
    }

    /// The positions of the rectangles that are large enough to point at. Collected on first use.
    const std::vector<std::uint32_t>& offered() const
    {
        if (m_layoutNumber != m_canvas.layoutNumber()) {
            forgetItems();
            m_offered.clear();
            for (std::size_t position = 0; position < m_canvas.layout().size(); ++position) {
                if (isOffered(position)) {
                    m_offered.push_back(static_cast<std::uint32_t>(position));
                }
            }
            m_layoutNumber = m_canvas.layoutNumber();
        }
        return m_offered;
    }

    QAccessibleInterface* childFor(std::optional<std::size_t> position) const { return child(indexFor(position)); }

    TreemapCanvas& m_canvas;
    const QMetaObject::Connection m_layoutShown;
    const QMetaObject::Connection m_selectionMoved;
    mutable std::vector<std::uint32_t> m_offered;
    mutable int m_layoutNumber = -1;
};

} // namespace

void install()
{
    installAccessible<List, TreemapCanvas>();
}

} // namespace morlaine::TreemapAccessibility
