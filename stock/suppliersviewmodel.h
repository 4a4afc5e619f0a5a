#pragma once

#include "records/supplier.h"
#include "store/formdraft.h"
#include "store/modelcontext.h"
#include "viewmodel/recordlistrow.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// One line of the suppliers list; the detail is the phone and e-mail, those that are filled in.
using SupplierRow = RecordListRow;

// The Suppliers screen: the searchable list, the details of the selected or a new supplier, and
// delete. The details edit a copy, which "Save" writes in one unit of work: no other save commits
// a half-typed edit and no other rollback loses one. A store that can't be read gives an empty
// list and says so in errorMessage.
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
    static constexpr int pageSize = 100;
    // The list by name, a page at a time: the `limit` suppliers after `after`, the last row shown,
    // or from the first without it; fewer than `limit` means the end. The search runs in SQL, to
    // the rule of filteredSuppliers.
    QList<SupplierRow> page(const SupplierRow* after = nullptr, int limit = pageSize);
    // The store's supplier of a row; null, with errorMessage, when it can't be read.
    Ref<Supplier> supplier(const QUuid& id);

    // The store's record on the form; null while none is open or it is a new one.
    Ref<Supplier> selectedSupplier() const { return m_form.live(); }
    // What the details show and edit; null while none is open.
    Ref<Supplier> editedSupplier() const { return m_form.edits(); }
    bool isNewSupplier() const { return m_form.isNew(); }
    // A new supplier nobody typed into has nothing to lose.
    bool hasUnsavedEdits() const { return m_form.hasEdits(); }
    // Opens the details on `supplier` (or closes them): edits not saved are dropped, so ask first.
    void select(const Ref<Supplier>& supplier);
    // "New Supplier": named so for the details to rename, reaching the store on Save. The search is
    // cleared so that it shows once saved.
    Ref<Supplier> addSupplier();
    // Back to the record as saved; a new supplier's details close.
    void discardEdits();
    // Absent on success, else why not, with the edits kept; a supplier needs a name, since
    // products pick it by name.
    std::optional<QString> save();
    // A new supplier is only dropped. False, with errorMessage, when the store refused.
    bool deleteSupplier();

Q_SIGNALS:
    void searchTextChanged();
    void selectionChanged();
    // A save or rollback touched suppliers: the rows are out of date.
    void suppliersChanged();

private:
    ModelContext& m_context;
    QString m_searchText;
    FormDraft<Supplier> m_form;
};
