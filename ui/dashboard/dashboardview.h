#pragma once

#include "reports/dashboardviewmodel.h"

#include <QScrollArea>

class AppEnvironment;
class ErrorLabel;
class QLabel;
class QTableWidget;

// The "Dashboard" section, for admins: today's figures on cards, the payment totals and the
// products to reorder. Read again each time it is shown, and while on show after every save.
class DashboardView : public QScrollArea {
    Q_OBJECT

public:
    DashboardView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    DashboardViewModel& model() { return m_model; }
    QLabel* titleLabel() const { return m_title; }
    QLabel* netSalesFigure() const { return m_netSales; }
    QLabel* transactionsFigure() const { return m_transactions; }
    QLabel* averageBasketFigure() const { return m_averageBasket; }
    QLabel* taxCollectedFigure() const { return m_taxCollected; }
    QLabel* grossProfitFigure() const { return m_grossProfit; }
    QLabel* owedToYouFigure() const { return m_owedToYou; }
    QLabel* lowStockCountFigure() const { return m_lowStockCount; }
    QLabel* tillStatusFigure() const { return m_tillStatus; }
    QLabel* tillStatusNote() const { return m_tillNote; }
    QTableWidget* paymentTable() const { return m_payments; }
    QLabel* noPaymentsLabel() const { return m_noPayments; }
    QTableWidget* lowStockTable() const { return m_lowStock; }
    QLabel* noLowStockLabel() const { return m_noLowStock; }
    ErrorLabel* errorLabel() const { return m_error; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refresh();

    DashboardViewModel m_model;

    QLabel* m_title;
    ErrorLabel* m_error;
    QLabel* m_netSales;
    QLabel* m_transactions;
    QLabel* m_averageBasket;
    QLabel* m_taxCollected;
    QLabel* m_grossProfit;
    QLabel* m_owedToYou;
    QLabel* m_lowStockCount;
    QLabel* m_tillStatus;
    QLabel* m_tillNote;
    QTableWidget* m_payments;
    QLabel* m_noPayments;
    QTableWidget* m_lowStock;
    QLabel* m_noLowStock;
};
