#include "UI/Widgets/SplitterAccessibility.h"

#include "UI/Widgets/InstallAccessible.h"

#include <QAccessibleWidget>
#include <QSplitter>

#include <algorithm>

namespace morlaine::SplitterAccessibility {

namespace {

/// The first divider is that before the first part, which is never shown.
class Parts final : public QAccessibleWidget {
public:
    explicit Parts(QSplitter& splitter) : QAccessibleWidget(&splitter, QAccessible::Splitter), m_splitter(splitter) {}

    int childCount() const override { return std::max(2 * m_splitter.count() - 1, 0); }

    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        QWidget* const part = index % 2 == 0 ? m_splitter.widget(index / 2) : m_splitter.handle(index / 2 + 1);
        return QAccessible::queryAccessibleInterface(part);
    }

    int indexOfChild(const QAccessibleInterface* wanted) const override
    {
        int index = 0;
        while (index < childCount() && child(index) != wanted) {
            ++index;
        }
        return index < childCount() ? index : -1;
    }

private:
    QSplitter& m_splitter;
};

} // namespace

void install()
{
    installAccessible<Parts, QSplitter>();
}

} // namespace morlaine::SplitterAccessibility
