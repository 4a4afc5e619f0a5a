#pragma once

#include "records/category.h"
#include "records/product.h"
#include "records/supplier.h"
#include "records/taxgroup.h"
#include "ui/controls/formfooter.h"

#include <QMap>

class ErrorLabel;
class ProductsViewModel;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

// The form on the selected or a new product: identity, pricing and taxes, stock, staff and
// commission, and the cost history. It edits the view model's copy of the product; "Save" writes
// it. Stock is only shown: it changes through Inventory, which writes a movement.
class ProductEditForm : public QWidget {
    Q_OBJECT

public:
    enum class Field { name, sku, barcode, costPrice, sellingPrice, reorderLevel, commission };
    enum class Picker { type, category, supplier, unit, taxGroup };
    enum class Toggle { active, taxable, askForStaff };

    explicit ProductEditForm(ProductsViewModel& model, QWidget* parent = nullptr);

    // The copy being edited.
    Ref<Product> product() const;
    QLineEdit* field(Field which) const;
    QComboBox* picker(Picker which) const;
    QCheckBox* toggle(Toggle which) const;
    QPushButton* newCategoryButton() const { return m_newCategory; }
    QPushButton* newSupplierButton() const { return m_newSupplier; }
    QPushButton* saveButton() const { return m_footer->saveButton(); }
    QPushButton* deleteButton() const { return m_footer->deleteButton(); }
    ErrorLabel* errorLabel() const { return m_footer->errorLabel(); }
    // Why the text of a number field can't be taken; hidden while it can.
    ErrorLabel* fieldErrorLabel(Field which) const;

    // Ready for a new product's name: the field focused and its text selected.
    void focusName();
    // Everything shown anew from the product.
    void reload();
    // After a change elsewhere: the pickers' lists, the stock and the cost history, leaving what is
    // being typed alone.
    void refresh();
    // "Save"; true when it went through. A refusal stays on the form.
    bool save();

Q_SIGNALS:
    // The product was changed on the form (not yet saved).
    void edited();

protected:
    // Tab follows the form as it reads.
    bool focusNextPrevChild(bool next) override;

private:
    QWidget* buildIdentity();
    QWidget* buildPricing();
    QWidget* buildStock();
    QWidget* buildStaff();
    QWidget* buildCostHistory();
    void bind();

    void fill();
    void fillCategories();
    void fillSuppliers();
    void fillTaxGroups();
    void showType();
    void showUnit();
    void showTaxes();
    void showMargin();
    void showStock();
    void showCostHistory();
    void changed();
    // Runs `show`; a store that can't be read is told on the form rather than taking it down.
    template <class Show> void showOrTell(Show show);
    void bindEntry(Field which);
    void showEntryProblem(Field which);
    void confirmDelete();
    void openNewCategory();
    void openNewSupplier();

    ProductsViewModel& m_model;
    QList<Ref<Category>> m_categories;
    QList<Ref<TaxGroup>> m_taxGroups;

    QList<QLineEdit*> m_fields;
    QList<QComboBox*> m_pickers;
    QList<QCheckBox*> m_toggles;
    QPushButton* m_newCategory = nullptr;
    QPushButton* m_newSupplier = nullptr;
    QLabel* m_costTitle = nullptr;
    QLabel* m_priceTitle = nullptr;
    QLabel* m_taxSummary = nullptr;
    QLabel* m_noTax = nullptr;
    QLabel* m_margin = nullptr;
    QList<QWidget*> m_stockRows;
    QLabel* m_stockOnHand = nullptr;
    QLabel* m_untrackedNote = nullptr;
    QLabel* m_uncountedNote = nullptr;
    QWidget* m_staffSection = nullptr;
    QMap<Field, ErrorLabel*> m_fieldErrors;
    QVBoxLayout* m_historyRows = nullptr;
    QWidget* m_historyBody = nullptr;
    FormFooter* m_footer = nullptr;
};
