#include "UI/Views/Inspector/NodePanel.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/StyledLabel.h"
#include "UI/Views/Inspector/ActionButton.h"
#include "UI/Views/Inspector/DetailRow.h"
#include "UI/Views/Inspector/InspectorText.h"
#include "UI/Views/Inspector/SelectableText.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Views/State/NodeActions.h"
#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/SymbolImage.h"
#include "Utilities/ShownText.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace morlaine {

namespace {

constexpr int margin = static_cast<int>(Theme::paddingMedium);
constexpr int gap = static_cast<int>(Theme::paddingSmall);
constexpr int iconSide = 32;
constexpr int nameLines = 3;

template <typename Widget>
Widget* ignoringItsWidth(Widget* widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    widget->setSizePolicy(policy);
    return widget;
}

SymbolName symbolOf(NodeAction action)
{
    switch (action) {
    case NodeAction::reveal:
        return "arrow.right.to.line.alt";
    case NodeAction::open:
        return "arrow.up.right.square";
    case NodeAction::copyPath:
        return "doc.on.doc";
    default:
        return "plus.magnifyingglass";
    }
}

} // namespace

NodePanel::NodePanel(MainViewModel& viewModel, QWidget* parent) : QWidget(parent), m_viewModel(viewModel)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(gap);
    column->addWidget(makeHeader());
    column->addSpacing(gap);
    addRows(*column);
    column->addSpacing(gap);
    addPath(*column);
    column->addSpacing(margin);
    addActions(*column);
    column->addStretch();
}

QWidget* NodePanel::makeHeader()
{
    m_icon = new SymbolImage("doc.fill", iconSide, Theme::textSecondary);
    m_name = ignoringItsWidth(new ElidingLabel(TextStyle::title3, Theme::textPrimary, nameLines));
    m_kind = new StyledLabel(TextStyle::subheadline, Theme::textSecondary);

    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins({});
    row->setSpacing(gap + gap / 2);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(m_name);
    texts->addWidget(m_kind);
    row->addLayout(texts, 1);
    return header;
}

void NodePanel::addRows(QVBoxLayout& column)
{
    constexpr int valueLines = 3;
    for (DetailRow*& row : m_rows) {
        // The first one tells the size.
        row =
            new DetailRow(QString(), valueLines, &row == m_rows.data() ? TextStyle::headline : TextStyle::subheadline);
        column.addWidget(row);
    }
}

void NodePanel::addPath(QVBoxLayout& column)
{
    auto* caption = new StyledLabel(TextStyle::caption, Theme::textSecondary);
    caption->setText(QStringLiteral("Full Path"));
    m_path = new SelectableText(caption->text(), TextStyle::subheadline);
    auto* lines = new QVBoxLayout;
    lines->setSpacing(2);
    lines->addWidget(caption);
    lines->addWidget(m_path);
    column.addLayout(lines);
}

void NodePanel::addActions(QVBoxLayout& column)
{
    for (const OfferedAction& offered : actionsOffered(NodeActionPlace::inspector)) {
        auto* button = new ActionButton(symbolOf(offered.action), offered.label);
        connect(button, &QPushButton::clicked, this, [this, action = offered.action] {
            if (const auto node = m_viewModel.selectedNode()) {
                perform(action, *node, m_viewModel);
            }
        });
        column.addWidget(button);
        m_actions.push_back(button);
    }
}

void NodePanel::refresh()
{
    if (const auto& node = m_viewModel.selectedNode()) {
        showHeader(*node);
        showRows(*node);
        m_path->setPath(InspectorText::fullPath(*node));
        const auto offered = actionsOffered(NodeActionPlace::inspector);
        for (std::size_t i = 0; i < offered.size(); ++i) {
            m_actions[i]->setVisible(offered[i].isFor(*node));
        }
    }
}

void NodePanel::showHeader(const FileNode& node)
{
    m_name->setText(shownText(node.name()));
    m_kind->setText(node.isDirectory() ? QStringLiteral("Folder") : QStringLiteral("File"));
    if (node.isDirectory()) {
        m_icon->setSymbol("folder.fill", Theme::accent);
    } else {
        m_icon->setSymbol("doc.fill", toQColor(node.fileCategory().color()));
    }
}

void NodePanel::showRows(const FileNode& node)
{
    const auto rows = InspectorText::rowsFor(node, m_viewModel.currentRootNode());
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const bool isUsed = i < rows.size();
        if (isUsed) {
            m_rows[i]->setLabel(rows[i].label);
            m_rows[i]->setValue(rows[i].value);
        }
        m_rows[i]->setVisible(isUsed);
    }
}

} // namespace morlaine
