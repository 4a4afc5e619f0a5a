#pragma once

#include "stock/suppliersviewmodel.h"
#include "ui/controls/formfooter.h"
#include "ui/navigation/editingscreen.h"

class AppEnvironment;
class DetailPages;
class ErrorLabel;
class QCheckBox;
class QLineEdit;
class QListView;
class QPlainTextEdit;
class QPushButton;
class RecordListCard;
class RecordRowModel;

// The "Suppliers" section: the searchable list beside the details of the selected or a new
// supplier, with "New Supplier", "Save" and "Delete Supplier". Leaving unsaved edits asks first.
class SuppliersView : public QWidget, public FormScreen {
    Q_OBJECT

public:
    enum class Field { name, phone, email };
    enum class Note { address, notes };

    SuppliersView(AppEnvironment& environment, QWidget* parent = nullptr);

    SuppliersViewModel& model() { return m_model; }
    QLineEdit* searchField() const { return m_search; }
    QListView* list() const;
    QPushButton* newSupplierButton() const { return m_new; }
    QLineEdit* field(Field which) const;
    QPlainTextEdit* note(Note which) const;
    QCheckBox* activeSwitch() const { return m_active; }
    QPushButton* saveButton() const { return m_footer->saveButton(); }
    QPushButton* deleteButton() const { return m_footer->deleteButton(); }
    ErrorLabel* errorLabel() const { return m_error; }
    ErrorLabel* formErrorLabel() const { return m_footer->errorLabel(); }
    // The suppliers loaded into the list, by name.
    QStringList listedNames() const;

    bool hasUnsavedEdits() const override { return m_model.hasUnsavedEdits(); }

protected:
    void showEvent(QShowEvent* event) override;
    QString editedName() const override;
    bool saveEdits() override { return save(); }
    void discardEdits() override { m_model.discardEdits(); }

private:
    QWidget* buildForm();
    // Read again as far as was loaded; from the top after the search changed.
    void refreshList(bool fromTop = false);
    // The selected supplier's row marked as chosen, loading pages down to it.
    void showChosenRow();
    void showSelection();
    void showFields();
    bool save();
    void confirmDelete();

    SuppliersViewModel m_model;
    QLineEdit* m_search = nullptr;
    QPushButton* m_new = nullptr;
    ErrorLabel* m_error = nullptr;
    RecordRowModel* m_rows = nullptr;
    RecordListCard* m_listCard = nullptr;
    DetailPages* m_detail = nullptr;
    QWidget* m_form = nullptr;
    QList<QLineEdit*> m_fields;
    QList<QPlainTextEdit*> m_notes;
    QCheckBox* m_active = nullptr;
    FormFooter* m_footer = nullptr;
};
