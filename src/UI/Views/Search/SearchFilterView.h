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

/// The panel that filters the tree by text, file type and minimum size, and lists the results. It writes the inputs to
/// the model and shows the results that the model publishes.
///
/// The model keeps text and type, and a new panel shows them. The panel keeps the selected threshold; a new panel
/// starts with the first one, whatever the model's threshold is.
class SearchFilterView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` must outlive this.
    explicit SearchFilterView(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Focuses the search field and selects its text.
    void focusSearchField();

    /// Index into `sizeFilters`.
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
