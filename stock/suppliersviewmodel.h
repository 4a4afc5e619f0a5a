#pragma once

#include "records/supplier.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// One line of the suppliers list, in finished text.
struct SupplierRow {
    Ref<Supplier> supplier;
    QString name;
    QString contact; // phone and e-mail, those that are filled in
    bool isInactive = false;
};

// The Suppliers screen: the searchable list, the selected supplier's details, "New Supplier" and
// delete. Edits go straight onto the record; "Save" writes them. A store that can't be read gives
// an empty list and says so in errorMessage.
class SuppliersViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString searchPrompt() { return QStringLiteral("Search suppliers"); }
    static QString newSupplierTitle() { return QStringLiteral("New Supplier"); }
    static QString emptyTitle() { return QStringLiteral("No suppliers"); }
    static QString emptyMessage() { return QStringLiteral("Add the businesses you buy stock from."); }
    static QString noSelectionTitle() { return QStringLiteral("Select a supplier"); }
    static QString noSelectionMessage()
    {
        return QStringLiteral("Choose a supplier from the list, or add a new one.");
    }
    static QString deleteTitle() { return QStringLiteral("Delete this supplier?"); }
    static QString deleteMessage()
    {
        return QStringLiteral("Products and purchase orders keep the supplier's name.");
    }
    static QString nameRequiredMessage() { return QStringLiteral("Enter a supplier name."); }

    explicit SuppliersViewModel(ModelContext& context, QObject* parent = nullptr);

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);

    // Those whose name, phone or e-mail contains the search (case-insensitive); order kept.
    QList<Ref<Supplier>> filteredSuppliers(const QList<Ref<Supplier>>& suppliers) const;
    // Every supplier by name, through filteredSuppliers.
    QList<SupplierRow> rows();
    static SupplierRow row(const Ref<Supplier>& supplier);

    Ref<Supplier> selectedSupplier() const { return m_selected; }
    void select(const Ref<Supplier>& supplier);

    // Saved at once as "New Supplier" for the details to rename, and selected; the search is
    // cleared so that it shows. Null when the save fails.
    Ref<Supplier> addSupplier();
    // Absent on success, else why not; a supplier needs a name, since products pick it by name.
    std::optional<QString> save(const Ref<Supplier>& supplier);
    bool deleteSupplier(const Ref<Supplier>& supplier);

Q_SIGNALS:
    void searchTextChanged();
    void selectionChanged();
    // A save or rollback touched suppliers: the rows are out of date.
    void suppliersChanged();

private:
    ModelContext& m_context;
    QString m_searchText;
    Ref<Supplier> m_selected;
};
