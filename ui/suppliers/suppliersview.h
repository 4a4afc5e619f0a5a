#pragma once

#include "stock/suppliersviewmodel.h"
#include "ui/controls/formfooter.h"
#include "ui/navigation/editingscreen.h"

class AppEnvironment;
class DetailPages;
class ErrorLabel;
class QCheckBox;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class RecordListCard;

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
    QListWidget* list() const;
    QPushButton* newSupplierButton() const { return m_new; }
    QLineEdit* field(Field which) const;
    QPlainTextEdit* note(Note which) const;
    QCheckBox* activeSwitch() const { return m_active; }
    QPushButton* saveButton() const { return m_footer->saveButton(); }
    QPushButton* deleteButton() const { return m_footer->deleteButton(); }
    ErrorLabel* errorLabel() const { return m_error; }
    ErrorLabel* formErrorLabel() const { return m_footer->errorLabel(); }
    QStringList listedNames() const;

    bool hasUnsavedEdits() const override { return m_model.hasUnsavedEdits(); }

protected:
    void showEvent(QShowEvent* event) override;
    QString editedName() const override;
    bool saveEdits() override { return save(); }
    void discardEdits() override { m_model.discardEdits(); }

private:
    QWidget* buildForm();
    void refreshList();
    void showSelection();
    void showFields();
    bool save();
    void confirmDelete();

    SuppliersViewModel m_model;
    QLineEdit* m_search = nullptr;
    QPushButton* m_new = nullptr;
    ErrorLabel* m_error = nullptr;
    RecordListCard* m_listCard = nullptr;
    DetailPages* m_detail = nullptr;
    QWidget* m_form = nullptr;
    QList<QLineEdit*> m_fields;
    QList<QPlainTextEdit*> m_notes;
    QCheckBox* m_active = nullptr;
    FormFooter* m_footer = nullptr;
    QList<Ref<Supplier>> m_listed;
};
