#pragma once

#include "customers/customersviewmodel.h"
#include "pos/posviewmodel.h"

#include <QHash>
#include <QUuid>
#include <QWidget>

#include <optional>

class AppEnvironment;
class CartLineRow;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
class SessionStore;

// The cart beside the product grid: its lines, the customer, the sale discount, the totals, and
// Hold, Pay and No Sale. Rows follow the cart line by line, so a scan into a long cart redraws
// one row, not all. One line is the chosen one, for the keyboard's quantity, discount and remove.
class CartPanelView : public QWidget {
    Q_OBJECT

public:
    CartPanelView(AppEnvironment& environment, SessionStore& session, POSViewModel& pos, QWidget* parent = nullptr);

    QList<CartLineRow*> rows() const;
    CartLineRow* row(const QUuid& lineID) const { return m_rows.value(lineID); }
    std::optional<QUuid> selectedLineID() const { return m_selected; }
    // Up and down the lines; the chosen line is kept in view.
    void moveSelection(int step);
    void changeSelectedQuantity();
    void discountSelectedLine();
    void removeSelectedLine();

    // "Line Discount" and "Change Price" for a line.
    void askLineDiscount(const QUuid& lineID);
    void askPrice(const QUuid& lineID);
    void applySaleDiscount();
    void showCustomerPicker();

    QLabel* totalLabel() const { return m_total; }
    QLineEdit* saleDiscountField() const { return m_saleDiscount; }
    QPushButton* customerButton() const { return m_customer; }
    QPushButton* heldSalesButton() const { return m_heldSales; }
    QPushButton* cancelSaleButton() const { return m_cancelSale; }
    QPushButton* holdButton() const { return m_hold; }
    QPushButton* payButton() const { return m_pay; }
    QPushButton* noSaleButton() const { return m_noSale; }
    // The totals as shown: title and amount, in order.
    QList<TotalsRow> shownTotals() const;

    // After a sale or a hold the count of held sales may have moved.
    void refreshHeldCount();

Q_SIGNALS:
    void payRequested();
    void heldSalesRequested();
    // The panel is done with the keyboard; the scan field takes it back.
    void done();

private:
    void showCart();
    void showLines();
    void showTotals();
    void select(const std::optional<QUuid>& lineID);
    // A title and amount under the lines, kept between updates.
    struct TotalsLine {
        QWidget* row;
        QLabel* title;
        QLabel* amount;
    };
    void fillTotals(QVBoxLayout* layout, QList<TotalsLine>& lines, const QList<TotalsRow>& rows);

    AppEnvironment& m_environment;
    POSViewModel& m_pos;
    CustomersViewModel m_customers;
    QHash<QUuid, CartLineRow*> m_rows;
    std::optional<QUuid> m_selected;
    QPushButton* m_heldSales;
    QPushButton* m_cancelSale;
    QPushButton* m_customer;
    QScrollArea* m_scroll;
    QVBoxLayout* m_lines;
    QWidget* m_emptyNote;
    QVBoxLayout* m_totalsAbove;
    QList<TotalsLine> m_aboveLines;
    QLineEdit* m_saleDiscount;
    QVBoxLayout* m_totalsBelow;
    QList<TotalsLine> m_belowLines;
    QLabel* m_total;
    QPushButton* m_hold;
    QPushButton* m_pay;
    QPushButton* m_noSale;
};
