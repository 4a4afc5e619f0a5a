#pragma once

#include "stock/suppliersviewmodel.h"

#include <QWidget>

class AppEnvironment;
class ErrorLabel;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;

// The "Suppliers" section: the searchable list beside the selected supplier's details, with
// "New Supplier", "Save" and "Delete Supplier".
class SuppliersView : public QWidget {
    Q_OBJECT

public:
    enum class Field { name, phone, email };
    enum class Note { address, notes };

    SuppliersView(AppEnvironment& environment, QWidget* parent = nullptr);

    SuppliersViewModel& model() { return m_model; }
    QLineEdit* searchField() const { return m_search; }
    QListWidget* list() const { return m_list; }
    QPushButton* newSupplierButton() const { return m_new; }
    QLineEdit* field(Field which) const;
    QPlainTextEdit* note(Note which) const;
    QCheckBox* activeSwitch() const { return m_active; }
    QPushButton* saveButton() const { return m_save; }
    QPushButton* deleteButton() const { return m_delete; }
    ErrorLabel* errorLabel() const { return m_error; }
    ErrorLabel* formErrorLabel() const { return m_formError; }
    QStringList listedNames() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildList();
    QWidget* buildDetail();
    void refreshList();
    void showSelection();
    void save();
    void confirmDelete();

    SuppliersViewModel m_model;
    QLineEdit* m_search = nullptr;
    QPushButton* m_new = nullptr;
    ErrorLabel* m_error = nullptr;
    QStackedWidget* m_listStack = nullptr;
    QListWidget* m_list = nullptr;
    QWidget* m_emptyList = nullptr;
    QStackedWidget* m_detail = nullptr;
    QWidget* m_noSelection = nullptr;
    QWidget* m_form = nullptr;
    QList<QLineEdit*> m_fields;
    QList<QPlainTextEdit*> m_notes;
    QCheckBox* m_active = nullptr;
    ErrorLabel* m_formError = nullptr;
    QLabel* m_saved = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_save = nullptr;
    QList<Ref<Supplier>> m_listed;
    bool m_changingRow = false;
};
