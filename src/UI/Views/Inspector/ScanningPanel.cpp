#include "UI/Views/Inspector/ScanningPanel.h"

#include "UI/Styles/StyledLabel.h"
#include "UI/Views/Inspector/DetailRow.h"
#include "UI/Views/Inspector/InspectorText.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Widgets/ProgressIndicator.h"
#include "UI/Widgets/ProminentButton.h"
#include "UI/Widgets/RoundedBox.h"

#include <QVBoxLayout>

namespace morlaine {

ScanningPanel::ScanningPanel(MainViewModel& viewModel, QWidget* parent) : QWidget(parent), m_viewModel(viewModel)
{
    const QString title = QStringLiteral("Scanning Disk Space...");
    auto* titleLabel = new StyledLabel(TextStyle::headline);
    titleLabel->setText(title);
    titleLabel->setAlignment(Qt::AlignCenter);
    titleLabel->setWordWrap(true);
    auto* cancel = new ProminentButton(QStringLiteral("Cancel Scan"), Theme::red);
    cancel->setAccessibleName(cancel->text());
    connect(cancel, &QPushButton::clicked, &m_viewModel, &MainViewModel::cancelScan);

    auto* column = new QVBoxLayout(this);
    constexpr int margin = static_cast<int>(Theme::paddingMedium);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(static_cast<int>(Theme::paddingMedium));
    column->addStretch();
    column->addWidget(new ProgressIndicator(ProgressIndicator::Size::regular, title), 0, Qt::AlignHCenter);
    column->addWidget(titleLabel);
    column->addWidget(makeBox());
    column->addWidget(cancel, 0, Qt::AlignHCenter);
    column->addStretch();
    refresh();
}

QWidget* ScanningPanel::makeBox()
{
    auto* box = new RoundedBox(0.5, Theme::cornerRadiusSmall);
    auto* column = new QVBoxLayout(box);
    constexpr int padding = 12;
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(static_cast<int>(Theme::paddingSmall));
    for (const InspectorText::Row& row : InspectorText::rowsFor(m_viewModel.scanner())) {
        m_rows.push_back(new DetailRow(row.label));
        column->addWidget(m_rows.back());
    }
    return box;
}

void ScanningPanel::refresh()
{
    const auto rows = InspectorText::rowsFor(m_viewModel.scanner());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        m_rows[i]->setValue(rows[i].value);
    }
}

} // namespace morlaine
