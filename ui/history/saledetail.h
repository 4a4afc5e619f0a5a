#pragma once

#include "records/sale.h"

#include <QWidget>

#include <optional>

class AppEnvironment;
class QGridLayout;
class QLabel;
class QPushButton;
class QTableWidget;
class SessionStore;

// One sale beside the history list: who, the lines, the totals and the payments, with a banner
// when it was voided; "Reprint Receipt", and "Void Sale…" for a sale that can still be voided.
// Follows the live record: refresh() shows what it holds now.
class SaleDetail : public QWidget {
    Q_OBJECT

public:
    SaleDetail(Ref<Sale> sale, AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    Ref<Sale> sale() const { return m_sale; }
    void refresh();

    // What stops the signed-in user from voiding it. A cashier is asked as if cashiers may void,
    // since an admin's approval comes after.
    std::optional<QString> voidProblem() const;

    QWidget* voidedBanner() const { return m_voidedBanner; }
    // Who voided it and when, and why.
    QLabel* voidedDetails() const { return m_voidedDetails; }
    QTableWidget* lineTable() const { return m_lines; }
    QTableWidget* paymentTable() const { return m_payments; }
    QPushButton* reprintButton() const { return m_reprint; }
    QPushButton* voidButton() const { return m_void; }
    QLabel* voidNote() const { return m_voidNote; }
    QLabel* totalLabel() const { return m_total; }

private:
    QString money(double amount) const;
    void openVoidSheet();
    struct FigureRow {
        QLabel* caption;
        QLabel* value;
    };
    FigureRow addFigureRow(QGridLayout* grid, const QString& caption);

    Ref<Sale> m_sale;
    AppEnvironment& m_environment;
    SessionStore& m_session;

    QLabel* m_title;
    QLabel* m_when;
    QWidget* m_voidedBanner;
    QLabel* m_voidedDetails;
    QLabel* m_cashier;
    QLabel* m_customer;
    QLabel* m_refundReasonCaption;
    QLabel* m_refundReason;
    QTableWidget* m_lines;
    QLabel* m_subtotal;
    QLabel* m_discounts;
    QLabel* m_tax;
    QLabel* m_total;
    QTableWidget* m_payments;
    QPushButton* m_reprint;
    QPushButton* m_void;
    QLabel* m_voidNote;
};
