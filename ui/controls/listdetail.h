#pragma once

#include <QStackedWidget>

class QAbstractItemModel;
class QLabel;
class QLineEdit;
class QListView;

// The pieces of a list-and-detail screen: the records listed on the left, the chosen one's detail
// on the right.

// Every such screen's list is as wide, so that moving between them the detail doesn't jump.
constexpr int recordListWidth = 320;

// The search above the list, with a line under it while the search finds nothing.
class SearchListPane : public QWidget {
    Q_OBJECT

public:
    // `noMatches` has %1 for what was searched for.
    SearchListPane(QLineEdit* search, QWidget* list, const QString& noMatches,
                   QWidget* parent = nullptr);

    void showMatches(const QString& searchText, bool anyMatch);
    bool isShowingNoMatches() const;

private:
    QString m_noMatchesText;
    QLabel* m_noMatches;
};

// The chosen record's detail, or a prompt to choose one.
class DetailPages : public QStackedWidget {
    Q_OBJECT

public:
    DetailPages(const QString& promptTitle, const QString& promptMessage, QWidget* parent = nullptr);

    // Added to the pages the first time; the prompt while null.
    void showDetail(QWidget* detail);
    bool isShowingPrompt() const;

private:
    QWidget* m_prompt;
};

// The list beside the detail pages; in place of both, a message while there are no records at all.
class ListDetailBody : public QStackedWidget {
    Q_OBJECT

public:
    ListDetailBody(QWidget* list, DetailPages* details, const QString& noRecordsTitle,
                   const QString& noRecordsMessage, QWidget* parent = nullptr);

    void showNoRecords(bool none);
    bool isShowingNoRecords() const;

private:
    QWidget* m_split;
    QWidget* m_noRecords;
};

// A list of records on a card, with a message in its place while it has no rows. The rows come
// from a model, paged as the list scrolls; a reset of the model keeps the list scrolled where it was
// and gives no rowChosen for the rows going and coming.
class RecordListCard : public QWidget {
    Q_OBJECT

public:
    RecordListCard(const QString& name, const QString& emptyTitle, const QString& emptyMessage,
                   QWidget* parent = nullptr);

    QListView* list() const { return m_list; }
    void setModel(QAbstractItemModel* model);
    // The row marked as chosen, or none for -1, without a rowChosen.
    void showChosenRow(int row);
    // The row marked as chosen; -1 for none.
    int chosenRow() const;
    // Marks the row as chosen as a click would, with a rowChosen.
    void chooseRow(int row);
    // While a rowChosen is handled: a reset then would pull the rows from under the list.
    bool isChoosing() const { return m_choosing; }

Q_SIGNALS:
    // The person chose that row.
    void rowChosen(int row);

private:
    void showRowsOrMessage();

    QStackedWidget* m_pages;
    QListView* m_list;
    QWidget* m_empty;
    bool m_choosing = false;
    bool m_quiet = false; // the list's own changes of row, which nobody chose
    int m_scrolled = 0;
};
