#pragma once

#include "selling/heldsalesmodel.h"

#include <QDialog>

#include <functional>

class ErrorLabel;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;
class SessionStore;

// "Held Sales" over the workspace: the holds still active, oldest first, each with Recall and
// Cancel. What a recall does to the workspace's cart is the workspace's to decide, so it is handed
// the hold; Cancel takes the hold off the list here, keeping its row as cancelled.
class HeldSalesView : public QDialog {
    Q_OBJECT

public:
    using RecallAction = std::function<void(const Ref<HeldSale>& held)>;

    HeldSalesView(ModelContext& context, SessionStore& session, RecallAction onRecall,
                  QWidget* parent = nullptr);

    HeldSalesModel& model() { return m_model; }
    bool isShowingNoHolds() const;
    // The Recall and Cancel buttons of each row, in the list's order.
    QList<QPushButton*> recallButtons() const { return m_recallButtons; }
    QList<QPushButton*> cancelButtons() const { return m_cancelButtons; }
    QPushButton* closeButton() const { return m_close; }

private:
    void refresh();
    QWidget* makeRow(const Ref<HeldSale>& held);

    HeldSalesModel m_model;
    SessionStore& m_session;
    RecallAction m_onRecall;
    ErrorLabel* m_error;
    QStackedWidget* m_pages;
    QVBoxLayout* m_rows;
    QList<QWidget*> m_rowWidgets;
    QList<QPushButton*> m_recallButtons;
    QList<QPushButton*> m_cancelButtons;
    QPushButton* m_close;
};
