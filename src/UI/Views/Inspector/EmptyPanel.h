#pragma once

#include <QString>
#include <QWidget>

#include <optional>

namespace morlaine {

class ElidingLabel;

/// The invitation to select something, with the last error message below it.
class EmptyPanel final : public QWidget {
    Q_OBJECT

public:
    explicit EmptyPanel(QWidget* parent = nullptr);

    void setMessage(const std::optional<QString>& message);

private:
    ElidingLabel* m_message;
};

} // namespace morlaine
