#include "UI/Views/Search/SearchFilterView.h"

#include "UI/Views/Search/FilterPicker.h"
#include "UI/Views/Search/SearchField.h"
#include "UI/Views/Search/SearchFilterContent.h"
#include "UI/Views/Search/SearchPlaceholder.h"
#include "UI/Views/Search/SearchResultDelegate.h"
#include "UI/Views/Search/SearchResultsModel.h"
#include "UI/Views/State/NodeActions.h"
#include "UI/Widgets/Divider.h"
#include "UI/Widgets/UniformListView.h"
#include "Utilities/Utf8.h"

#include <QAbstractItemView>
#include <QMenu>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int margin = 8;

/// The first entry of the picker means no category.
std::optional<FileCategory> categoryAt(int pickerIndex)
{
    if (pickerIndex <= 0) {
        return std::nullopt;
    }
    return FileCategory::allCases.at(static_cast<std::size_t>(pickerIndex - 1));
}

int pickerIndexOf(std::optional<FileCategory> category)
{
    return category ? static_cast<int>(std::ranges::find(FileCategory::allCases, FileCategory::Case(*category)) -
                                       FileCategory::allCases.begin()) +
                          1
                    : 0;
}

} // namespace

SearchFilterView::SearchFilterView(MainViewModel& viewModel, QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_field(new SearchField(this))
    , m_typePicker(new FilterPicker(QStringLiteral("Type:"), this))
    , m_sizePicker(new FilterPicker(QStringLiteral("Min Size"), this))
    , m_content(new QStackedWidget(this))
    , m_results(new SearchResultsModel(this))
    , m_list(new UniformListView(this))
    , m_observer(viewModel, [this] { refresh(); })
{
    composePanel();
    buildField();
    buildTypePicker();
    buildSizePicker();
    buildList();
    buildContent();
    refresh();
}

void SearchFilterView::composePanel()
{
    auto* pickers = new QHBoxLayout;
    pickers->setSpacing(margin);
    pickers->addWidget(m_typePicker, 4);
    pickers->addWidget(m_sizePicker, 3);

    auto* inputs = new QVBoxLayout;
    inputs->setContentsMargins(margin, margin, margin, margin);
    inputs->setSpacing(margin);
    inputs->addWidget(m_field);
    inputs->addLayout(pickers);

    auto* panel = new QVBoxLayout(this);
    panel->setContentsMargins(0, 0, 0, 0);
    panel->setSpacing(0);
    panel->addLayout(inputs);
    panel->addWidget(new Divider(this));
    panel->addWidget(m_content, 1);
}

void SearchFilterView::buildField()
{
    connect(m_field, &SearchField::edited, &m_viewModel, &MainViewModel::setSearchText);
    connect(m_field, &SearchField::submitted, this, &SearchFilterView::selectFirstResult);
    connect(m_field, &SearchField::leftDownwards, this, &SearchFilterView::enterList);
}

void SearchFilterView::buildTypePicker()
{
    m_typePicker->addItem(QStringLiteral("All Categories"));
    for (const FileCategory category : FileCategory::allCases) {
        m_typePicker->addItem(textOfUtf8(category.displayName()));
    }
    m_typePicker->setMaxVisibleItems(m_typePicker->count());
    connect(m_typePicker, &QComboBox::currentIndexChanged, this, &SearchFilterView::chooseType);
}

void SearchFilterView::buildSizePicker()
{
    for (const SizeFilter& filter : sizeFilters) {
        m_sizePicker->addItem(filter.name);
    }
    // Also emitted for choosing "Any Size" again, which clears a threshold in the model that this panel does not show.
    connect(m_sizePicker, &QComboBox::activated, this, &SearchFilterView::chooseSize);
}

void SearchFilterView::buildList()
{
    m_list->setAccessibleName(QStringLiteral("Search results"));
    m_list->setItemDelegate(new SearchResultDelegate(*m_results, m_list));
    m_list->setModel(m_results);
    connect(m_results, &QAbstractItemModel::modelReset, m_list, &QAbstractItemView::scrollToTop);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) { select(selected.indexes().value(0)); });
    connect(m_list, &QAbstractItemView::clicked, this, &SearchFilterView::select);
    connect(m_list, &UniformListView::returnPressed, this, &SearchFilterView::selectCurrent);
    connect(m_list, &UniformListView::leftUpwards, m_field, &SearchField::focusAndSelect);
    connect(m_list, &UniformListView::rowMenuRequested, this, &SearchFilterView::showRowMenu);
}

/// In the order of SearchContent.
void SearchFilterView::buildContent()
{
    m_content->setMinimumHeight(1);
    m_content->addWidget(new SearchPlaceholder(
        "magnifyingglass", QStringLiteral("Search & Filter Scan"),
        QStringLiteral("Type a name or pick a type/size filter above to locate large files."), this));
    m_content->addWidget(new SearchPlaceholder("questionmark.folder", QStringLiteral("No matches found"), {}, this));
    m_content->addWidget(m_list);
}

void SearchFilterView::focusSearchField()
{
    m_field->focusAndSelect();
}

int SearchFilterView::selectedSizeFilterIndex() const
{
    return m_sizePicker->currentIndex();
}

void SearchFilterView::refresh()
{
    updateInputs();
    updateContent();
    updateSelection();
}

/// User input is written to the model at once, so that the model is never older than the inputs.
void SearchFilterView::updateInputs()
{
    m_field->setText(m_viewModel.searchText());
    m_typePicker->setCurrentIndex(pickerIndexOf(m_viewModel.selectedCategory()));
}

void SearchFilterView::updateContent()
{
    const SearchResults& results = m_viewModel.searchResults();
    m_results->setResults(results);
    m_content->setCurrentIndex(static_cast<int>(searchContent(m_viewModel.searchText(), m_viewModel.selectedCategory(),
                                                              m_viewModel.minSizeFilter(), !results.empty())));
}

/// A selection in the list is cleared when it differs from the model's.
void SearchFilterView::updateSelection()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    const std::optional<FileNode>& node = m_viewModel.selectedNode();
    if (!selected.isEmpty() && (!node || node->id() != m_results->result(selected.first().row()).id())) {
        m_list->clearSelection();
    }
}

void SearchFilterView::chooseType(int index)
{
    if (const std::optional<FileCategory> category = categoryAt(index); category != m_viewModel.selectedCategory()) {
        m_viewModel.setSelectedCategory(category);
    }
}

void SearchFilterView::chooseSize(int index)
{
    m_viewModel.setMinSizeFilter(sizeFilterBytes(index));
}

void SearchFilterView::select(const QModelIndex& index)
{
    if (!index.isValid()) {
        return;
    }
    const SearchResultNode result = m_results->result(index.row());
    if (const std::optional<FileNode>& node = m_viewModel.selectedNode(); !node || node->id() != result.id()) {
        m_viewModel.setSelectedNode(result.node());
    }
}

void SearchFilterView::selectCurrent()
{
    m_list->setCurrentIndex(m_list->currentIndex());
    select(m_list->currentIndex());
}

/// Refreshes first: the results may be newer than the list.
void SearchFilterView::selectFirstResult()
{
    refresh();
    if (m_results->rowCount() > 0) {
        m_list->setCurrentIndex(m_results->index(0));
        select(m_list->currentIndex());
    }
}

void SearchFilterView::enterList()
{
    refresh();
    if (m_content->currentWidget() != m_list) {
        return;
    }
    const QModelIndex current = m_list->currentIndex();
    const QModelIndex entered = current.isValid() ? current : m_results->index(0);
    m_list->setFocus(Qt::OtherFocusReason);
    m_list->setCurrentIndex(entered);
    select(entered);
}

void SearchFilterView::showRowMenu(const QModelIndex& index, const QPoint& globalPosition)
{
    const FileNode node = m_results->result(index.row()).node();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const OfferedAction& offered : actionsOffered(NodeActionPlace::resultMenu)) {
        menu->addAction(offered.label, &m_viewModel,
                        [this, node, action = offered.action] { perform(action, node, m_viewModel); });
    }
    menu->popup(globalPosition);
}

} // namespace morlaine
