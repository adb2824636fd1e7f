#pragma once

#include "UI/Views/State/MainViewModel.h"
#include "Utilities/ChangeObserver.h"

#include <QWidget>

#include <cstdint>

class QComboBox;
class QStackedWidget;

namespace morlaine {

class SearchField;
class SearchResultsModel;
class UniformListView;

/// The panel that narrows the tree by text, file type and least size, and lists what the search has found. It searches
/// nothing itself: it writes the inputs into the model and shows the results that the model publishes.
///
/// Text and type live in the model, and a new panel shows them. The place in the list of thresholds lives here and
/// starts at the first, whatever the model's threshold is.
class SearchFilterView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` must outlive this.
    explicit SearchFilterView(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Puts the keyboard into the search field, with its text selected.
    void focusSearchField();

    /// Into `sizeFilters`.
    [[nodiscard]] int selectedSizeFilterIndex() const;

private:
    void buildField();
    void buildTypePicker();
    void buildSizePicker();
    void buildList();
    void buildContent();
    void composePanel();

    void refresh();
    void updateInputs();
    void updateContent();
    void updateSelection();

    void chooseType(int index);
    void chooseSize(int index);
    void select(const QModelIndex& index);
    void selectCurrent();
    void selectFirstResult();
    void enterList();
    void showRowMenu(const QModelIndex& index, const QPoint& globalPosition);

    MainViewModel& m_viewModel;
    SearchField* m_field;
    QComboBox* m_typePicker;
    QComboBox* m_sizePicker;
    QStackedWidget* m_content;
    SearchResultsModel* m_results;
    UniformListView* m_list;
    ChangeObserver m_observer;
};

} // namespace morlaine
