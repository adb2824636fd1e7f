#pragma once

#include <QWidget>

#include <vector>

class QPushButton;

namespace morlaine {

class DetailRow;
class DiskScanner;

/// The progress of a running scan, with the button that cancels it.
class ScanningPanel final : public QWidget {
    Q_OBJECT

public:
    explicit ScanningPanel(const DiskScanner& scanner, QWidget* parent = nullptr);

    /// Reads the scanner again.
    void refresh();

Q_SIGNALS:
    void cancelRequested();

private:
    [[nodiscard]] QWidget* makeBox();

    const DiskScanner& m_scanner;
    std::vector<DetailRow*> m_rows;
};

} // namespace morlaine
