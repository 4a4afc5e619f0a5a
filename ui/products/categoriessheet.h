#pragma once

#include "stock/categoriesviewmodel.h"
#include "ui/controls/sheet.h"

class QLineEdit;
class QListView;
class RecordListCard;
class RecordRowModel;

// "Categories…" from the Products screen: every category with its product count; the chosen one
// renamed, or deleted after a question that says how many products it holds.
class CategoriesSheet : public Sheet {
    Q_OBJECT

public:
    CategoriesSheet(ModelContext& context, QWidget* parent = nullptr);

    CategoriesViewModel& model() { return m_model; }
    QListView* list() const;
    RecordRowModel& rows() const { return *m_rows; }
    QLineEdit* nameField() const { return m_name; }
    QPushButton* renameButton() const { return m_rename; }
    QPushButton* deleteButton() const { return m_delete; }
    // Chooses the category of that row, as a click would.
    void chooseRow(int row);

private:
    void primaryAction() override { accept(); }
    void refreshList();
    void choose(const QUuid& categoryID, const QString& name);
    void rename();
    void confirmDelete();

    CategoriesViewModel m_model;
    RecordRowModel* m_rows;
    RecordListCard* m_list;
    QLineEdit* m_name;
    QPushButton* m_rename;
    QPushButton* m_delete;
    QUuid m_chosen;
};
