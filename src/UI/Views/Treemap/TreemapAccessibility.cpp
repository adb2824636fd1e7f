#include "UI/Views/Treemap/TreemapAccessibility.h"

#include "UI/Styles/Conversions.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "Utilities/ShownText.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWindow>

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace morlaine::TreemapAccessibility {

namespace {

/// One rectangle of one layout. Becomes invalid when the canvas shows another layout.
class Item final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Item(TreemapCanvas& canvas, std::size_t position)
        : m_canvas(canvas)
        , m_layoutNumber(canvas.layoutNumber())
        , m_position(position)
    {
    }

    std::size_t position() const { return m_position; }

    bool isValid() const override { return m_layoutNumber == m_canvas.layoutNumber(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_canvas.window()->windowHandle(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&m_canvas); }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid()) {
            return {};
        }
        switch (kind) {
        case QAccessible::Name:
            return shownText(item().node.name());
        case QAccessible::Description:
        case QAccessible::Value:
            return QString::fromStdString(item().node.formattedSize());
        default:
            return {};
        }
    }

    QRect rect() const override
    {
        if (!isValid()) {
            return {};
        }
        const QRect inCanvas = toQRectF(item().rect).toAlignedRect() & m_canvas.rect();
        return {m_canvas.mapToGlobal(inCanvas.topLeft()), inCanvas.size()};
    }

    QAccessible::State state() const override
    {
        const bool isSelected = isValid() && m_canvas.selectedPosition() == m_position;
        QAccessible::State state;
        state.invalid = !isValid();
        state.invisible = !m_canvas.isVisible();
        state.selectable = true;
        state.selected = isSelected;
        state.focusable = true;
        state.focused = isSelected && m_canvas.hasFocus();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    void doAction(const QString& name) override
    {
        if (name == pressAction() && isValid()) {
            Q_EMIT m_canvas.rectPressed(m_position);
        }
    }

private:
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
class List final : public QAccessibleWidget {
public:
    explicit List(TreemapCanvas& canvas)
        : QAccessibleWidget(&canvas, QAccessible::List)
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
        forgetItems();
    }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    int childCount() const override { return static_cast<int>(offered().size()); }

    /// Qt owns registered interfaces and returns them by id.
    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        const auto [known, isNew] = m_items.try_emplace(index);
        if (isNew) {
            known->second = QAccessible::registerAccessibleInterface(
                new Item(m_canvas, offered()[static_cast<std::size_t>(index)]));
        }
        return QAccessible::accessibleInterface(known->second);
    }

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

    void forgetItems() const
    {
        for (const auto& [index, id] : m_items) {
            QAccessible::deleteAccessibleInterface(id);
        }
        m_items.clear();
    }

    TreemapCanvas& m_canvas;
    const QMetaObject::Connection m_layoutShown;
    const QMetaObject::Connection m_selectionMoved;
    mutable std::unordered_map<int, QAccessible::Id> m_items;
    mutable std::vector<std::uint32_t> m_offered;
    mutable int m_layoutNumber = -1;
};

QAccessibleInterface* make(const QString& /*className*/, QObject* object)
{
    auto* const canvas = qobject_cast<TreemapCanvas*>(object);
    return canvas != nullptr ? new List(*canvas) : nullptr;
}

} // namespace

void install()
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(make), true);
}

} // namespace morlaine::TreemapAccessibility
