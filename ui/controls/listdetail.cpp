#include "ui/controls/listdetail.h"

#include "ui/controls/emptystate.h"
#include "ui/style/theme.h"

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QVBoxLayout>

SearchListPane::SearchListPane(QLineEdit* search, QWidget* list, const QString& noMatches,
                               QWidget* parent)
    : QWidget(parent)
    , m_noMatchesText(noMatches)
    , m_noMatches(Theme::label(QString(), Theme::Text::note, this))
{
    m_noMatches->setTextFormat(Qt::PlainText);
    m_noMatches->hide();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addWidget(search);
    column->addWidget(m_noMatches);
    column->addWidget(list, 1);
}

void SearchListPane::showMatches(const QString& searchText, bool anyMatch)
{
    m_noMatches->setText(m_noMatchesText.arg(searchText));
    m_noMatches->setVisible(!anyMatch && !searchText.isEmpty());
}

bool SearchListPane::isShowingNoMatches() const
{
    return !m_noMatches->isHidden();
}

DetailPages::DetailPages(const QString& promptTitle, const QString& promptMessage, QWidget* parent)
    : QStackedWidget(parent)
    , m_prompt(makeEmptyState(promptTitle, promptMessage, this))
{
    addWidget(m_prompt);
}

void DetailPages::showDetail(QWidget* detail)
{
    if (detail && indexOf(detail) < 0)
        addWidget(detail);
    setCurrentWidget(detail ? detail : m_prompt);
}

bool DetailPages::isShowingPrompt() const
{
    return currentWidget() == m_prompt;
}

ListDetailBody::ListDetailBody(QWidget* list, DetailPages* details, const QString& noRecordsTitle,
                               const QString& noRecordsMessage, QWidget* parent)
    : QStackedWidget(parent)
    , m_split(new QWidget(this))
    , m_noRecords(makeEmptyState(noRecordsTitle, noRecordsMessage, this))
{
    auto* split = new QHBoxLayout(m_split);
    split->setContentsMargins(0, 0, 0, 0);
    split->setSpacing(24);
    split->addWidget(list);
    split->addWidget(details, 1);
    addWidget(m_split);
    addWidget(m_noRecords);
}

void ListDetailBody::showNoRecords(bool none)
{
    setCurrentWidget(none ? m_noRecords : m_split);
}

bool ListDetailBody::isShowingNoRecords() const
{
    return currentWidget() == m_noRecords;
}

RecordListCard::RecordListCard(const QString& name, const QString& emptyTitle, const QString& emptyMessage,
                               QWidget* parent)
    : QWidget(parent)
    , m_pages(new QStackedWidget(this))
    , m_list(new QListView(m_pages))
    , m_empty(makeEmptyState(emptyTitle, emptyMessage, m_pages))
{
    Theme::markCard(this);
    m_list->setAccessibleName(name);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setMouseTracking(true);
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_empty);
    m_pages->setCurrentWidget(m_empty);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 6, 1, 6);
    column->addWidget(m_pages);
}

void RecordListCard::setModel(QAbstractItemModel* model)
{
    m_list->setModel(model);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        m_quiet = true;
        m_scrolled = m_list->verticalScrollBar()->value();
    });
    connect(model, &QAbstractItemModel::modelReset, this, [this] {
        // Laid out at once, so that the scroll bar has its new range to go back into.
        m_list->doItemsLayout();
        m_list->verticalScrollBar()->setValue(m_scrolled);
        m_quiet = false;
        showRowsOrMessage();
    });
    connect(model, &QAbstractItemModel::rowsInserted, this, &RecordListCard::showRowsOrMessage);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &RecordListCard::showRowsOrMessage);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_quiet || !current.isValid())
                    return;
                m_choosing = true;
                Q_EMIT rowChosen(current.row());
                m_choosing = false;
            });
    showRowsOrMessage();
}

void RecordListCard::showRowsOrMessage()
{
    const bool any = m_list->model() && m_list->model()->rowCount() > 0;
    m_pages->setCurrentWidget(any ? static_cast<QWidget*>(m_list) : m_empty);
}

void RecordListCard::showChosenRow(int row)
{
    QItemSelectionModel* selection = m_list->selectionModel();
    m_quiet = true;
    if (row < 0) {
        selection->clear();
    } else {
        const QModelIndex index = m_list->model()->index(row, 0);
        selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        m_list->scrollTo(index);
    }
    m_quiet = false;
}

int RecordListCard::chosenRow() const
{
    const QModelIndex current = m_list->selectionModel()->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void RecordListCard::chooseRow(int row)
{
    m_list->selectionModel()->setCurrentIndex(m_list->model()->index(row, 0),
                                              QItemSelectionModel::ClearAndSelect);
}
