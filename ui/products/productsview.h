#pragma once

#include "stock/productsviewmodel.h"
#include "ui/navigation/editingscreen.h"

#include <QWidget>

class AppEnvironment;
class CategoriesSheet;
class DetailPages;
class ErrorLabel;
class ProductEditForm;
class QCheckBox;
class QComboBox;
class ProductListModel;
class QLineEdit;
class QListView;
class QMenu;
class QPushButton;
class RecordListCard;

// The "Products" section: the catalogue with its filter bar, "New Product" with a menu of the
// three types, and the form on the selected or new product beside the list. Leaving unsaved edits
// (another row, a new product, another screen) asks first.
class ProductsView : public QWidget, public FormScreen {
    Q_OBJECT

public:
    ProductsView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    ProductsViewModel& model() { return m_model; }
    QLineEdit* searchField() const { return m_search; }
    QComboBox* categoryFilter() const { return m_category; }
    QComboBox* typeFilter() const { return m_type; }
    QCheckBox* lowStockToggle() const { return m_lowStock; }
    QCheckBox* inactiveToggle() const { return m_inactive; }
    QPushButton* newProductButton() const { return m_newProduct; }
    QMenu* newProductMenu() const { return m_newProductMenu; }
    QPushButton* categoriesButton() const { return m_categories; }
    // The Categories sheet while it is open, else null.
    CategoriesSheet* categoriesSheet() const;
    QListView* list() const;
    ProductListModel& rows() const { return *m_rows; }
    // Null while nothing is selected.
    ProductEditForm* form() const { return m_form; }
    ErrorLabel* errorLabel() const { return m_error; }
    // The products loaded into the list, by name as shown.
    QStringList listedNames() const;
    // Selects the listed product of that row, as a click would.
    void selectRow(int row);

    bool hasUnsavedEdits() const override { return m_model.hasUnsavedEdits(); }

protected:
    void showEvent(QShowEvent* event) override;
    QString editedName() const override;
    bool saveEdits() override;
    void discardEdits() override { m_model.discardEdits(); }

private:
    QWidget* buildHeader();
    QWidget* buildFilterBar();
    void fillCategoryFilter();
    // Read again as far as was loaded; from the top after a filter changed.
    void refreshList(bool fromTop = false);
    // The selected product's row marked as chosen, loading pages down to it.
    void showChosenRow();
    void showSelection();
    // The selected product's row shows what is being typed.
    void updateEditedRow();
    void newProduct(std::optional<ProductType> type);

    ModelContext& m_context;
    ProductsViewModel m_model;
    QLineEdit* m_search = nullptr;
    QComboBox* m_category = nullptr;
    QComboBox* m_type = nullptr;
    QCheckBox* m_lowStock = nullptr;
    QCheckBox* m_inactive = nullptr;
    QPushButton* m_newProduct = nullptr;
    QPushButton* m_newProductMore = nullptr;
    QMenu* m_newProductMenu = nullptr;
    QPushButton* m_categories = nullptr;
    ErrorLabel* m_error = nullptr;
    ProductListModel* m_rows = nullptr;
    RecordListCard* m_listCard = nullptr;
    DetailPages* m_detail = nullptr;
    ProductEditForm* m_form = nullptr;
};
