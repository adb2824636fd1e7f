#pragma once

#include <QWidget>

#include <vector>

namespace morlaine {

class DetailRow;
class MainViewModel;

/// The progress of a running scan, with the button that cancels it.
class ScanningPanel final : public QWidget {
    Q_OBJECT

public:
    explicit ScanningPanel(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Reads the scanner again.
    void refresh();

private:
    [[nodiscard]] QWidget* makeBox();

    MainViewModel& m_viewModel;
    std::vector<DetailRow*> m_rows;
};

} // namespace morlaine
