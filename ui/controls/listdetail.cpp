#include "ui/controls/listdetail.h"

#include "ui/controls/emptystate.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalBlocker>
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
    , m_list(new QListWidget(m_pages))
    , m_empty(makeEmptyState(emptyTitle, emptyMessage, m_pages))
{
    Theme::markCard(this);
    m_list->setAccessibleName(name);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setMouseTracking(true);
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_empty);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 6, 1, 6);
    column->addWidget(m_pages);

    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0)
            return;
        m_choosing = true;
        Q_EMIT rowChosen(row);
        m_choosing = false;
    });
}

void RecordListCard::refill(const std::function<void()>& fill)
{
    const int scrolled = m_list->verticalScrollBar()->value();
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
        fill();
    }
    m_list->verticalScrollBar()->setValue(scrolled);
    m_pages->setCurrentWidget(m_list->count() > 0 ? m_list : m_empty);
}

void RecordListCard::showChosenRow(int row)
{
    const QSignalBlocker blocker(m_list);
    m_list->setCurrentRow(row);
    // No current row leaves the last one highlighted unless told.
    if (row < 0)
        m_list->clearSelection();
}
