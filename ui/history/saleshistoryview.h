#pragma once

#include "selling/saleshistory.h"

#include <QUuid>
#include <QWidget>

class AppEnvironment;
class DetailPages;
class ErrorLabel;
class QDateEdit;
class QLineEdit;
class QListView;
class QStackedWidget;
class SaleDetail;
class SalesListModel;
class SessionStore;

// The "Sales History" section: the sales between two dates, newest first, narrowed by a search of
// invoice, customer and cashier, with the chosen sale's detail beside them. Admins see every sale,
// anyone else their own. The chosen sale stays shown while the filters change, and everything
// follows each saved change to sales, whoever made it.
class SalesHistoryView : public QWidget {
    Q_OBJECT

public:
    SalesHistoryView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    QDateEdit* fromField() const { return m_from; }
    QDateEdit* toField() const { return m_to; }
    QLineEdit* searchField() const { return m_search; }
    QListView* saleList() const { return m_list; }
    SalesListModel& listModel() const { return *m_rows; }
    SaleDetail* detail() const { return m_detail; }
    bool isShowingNoSales() const;
    // Chooses the sale in the list, as a click would; false while it isn't listed.
    bool selectSale(const QUuid& saleID);

private:
    SalesHistory::Filter filter() const;
    void applyFilter();
    void refresh();
    void showList();
    void showSelection();

    AppEnvironment& m_environment;
    SessionStore& m_session;
    QUuid m_selectedID;
    bool m_rebuilding = false;

    ErrorLabel* m_error;
    QDateEdit* m_from;
    QDateEdit* m_to;
    QLineEdit* m_search;
    SalesListModel* m_rows;
    QListView* m_list;
    QStackedWidget* m_listPages;
    DetailPages* m_detailPages;
    SaleDetail* m_detail = nullptr;
};
