#include "ui/products/categoriessheet.h"

#include "ui/controls/asktodelete.h"
#include "ui/controls/listdetail.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/recordrowmodel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

CategoriesSheet::CategoriesSheet(ModelContext& context, QWidget* parent)
    : Sheet(QStringLiteral("Done"), parent)
    , m_model(context)
    , m_rows(new RecordRowModel(
          CategoriesViewModel::pageSize,
          [this](const RecordListRow* after, int limit) { return m_model.page(after, limit); }, this))
    , m_list(new RecordListCard(CategoriesViewModel::title(), CategoriesViewModel::emptyTitle(),
                                CategoriesViewModel::emptyMessage(), this))
    , m_name(new QLineEdit(this))
    , m_rename(new QPushButton(CategoriesViewModel::renameTitle(), this))
    , m_delete(new QPushButton(CategoriesViewModel::deleteTitle(), this))
{
    setTitle(CategoriesViewModel::title());
    setFixedWidth(440);
    // Each change is saved as it is made: there is nothing to cancel. Return renames; only Done
    // closes the sheet.
    cancelButton()->hide();
    primaryButton()->setDefault(false);
    primaryButton()->setAutoDefault(false);

    m_list->setModel(m_rows);
    m_list->list()->setItemDelegate(new RecordRowDelegate(m_list->list()));
    m_list->setFixedHeight(300);
    form()->addWidget(m_list);

    auto* caption = new QLabel(CategoriesViewModel::nameTitle(), this);
    caption->setBuddy(m_name);
    m_name->setAccessibleName(CategoriesViewModel::nameTitle());
    form()->addWidget(caption);
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(m_name, 1);
    line->addWidget(m_rename);
    m_rename->setDefault(true);
    form()->addLayout(line);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_delete);
    foot->addStretch();
    form()->addLayout(foot);
    choose(QUuid(), QString());

    connect(m_list, &RecordListCard::rowChosen, this,
            [this](int row) { choose(m_rows->recordID(row), m_rows->rows().value(row).name); });
    connect(m_rename, &QPushButton::clicked, this, &CategoriesSheet::rename);
    connect(m_delete, &QPushButton::clicked, this, &CategoriesSheet::confirmDelete);
    connect(&m_model, &CategoriesViewModel::categoriesChanged, this, [this] {
        // Not while the list is in the middle of changing its current row: it is read again after.
        if (m_list->isChoosing())
            QTimer::singleShot(0, this, &CategoriesSheet::refreshList);
        else
            refreshList();
    });
    m_rows->restart();
}

QListView* CategoriesSheet::list() const
{
    return m_list->list();
}

void CategoriesSheet::chooseRow(int row)
{
    m_list->chooseRow(row);
}

void CategoriesSheet::refreshList()
{
    m_rows->reload();
    const int row = m_chosen.isNull() ? -1 : m_rows->rowOf(m_chosen);
    // Deleted elsewhere: nothing is chosen any more.
    if (row < 0 && !m_chosen.isNull())
        choose(QUuid(), QString());
    m_list->showChosenRow(row);
}

void CategoriesSheet::choose(const QUuid& categoryID, const QString& name)
{
    m_chosen = categoryID;
    m_name->setText(name);
    const bool any = !categoryID.isNull();
    m_name->setEnabled(any);
    m_rename->setEnabled(any);
    m_delete->setEnabled(any);
    showError(std::nullopt);
}

void CategoriesSheet::rename()
{
    if (m_chosen.isNull())
        return;
    const std::optional<QString> failure = m_model.rename(m_chosen, m_name->text());
    showError(failure);
    if (failure) {
        m_name->setFocus();
        return;
    }
    // The list moved the category to its new place by name.
    m_name->setText(m_name->text().trimmed());
    m_list->showChosenRow(m_rows->rowOf(m_chosen));
}

void CategoriesSheet::confirmDelete()
{
    if (m_chosen.isNull())
        return;
    const QUuid chosen = m_chosen;
    const QString name = m_rows->rows().value(m_rows->rowOf(chosen)).name;
    askToDelete(this, CategoriesViewModel::deleteQuestion(name),
                CategoriesViewModel::deleteConsequences(m_model.productCount(chosen)), [this, chosen] {
                    const std::optional<QString> failure = m_model.remove(chosen);
                    if (!failure)
                        choose(QUuid(), QString());
                    showError(failure);
                });
}
