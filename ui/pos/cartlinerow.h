#pragma once

#include "selling/cart.h"

#include <QFrame>
#include <QUuid>

class POSViewModel;
class QComboBox;
class QLabel;
class QPushButton;
class QToolButton;

// One line of the cart: the name, its amount, and the controls the line takes. A counted line has
// minus and plus; a measured one shows its amount, which opens the amount sheet. A service asks
// who did it. The menu holds the rest: quantity or amount, line discount, price, remove.
class CartLineRow : public QFrame {
    Q_OBJECT

public:
    CartLineRow(POSViewModel& pos, const CartLine& line, QWidget* parent);

    QUuid lineID() const { return m_lineID; }
    // The line as the cart now has it; only what changed is redrawn.
    void showLine(const CartLine& line);
    void setSelected(bool selected);
    bool isSelected() const { return m_selected; }

    QLabel* nameLabel() const { return m_name; }
    QLabel* quantityLabel() const { return m_quantity; }
    QLabel* amountLabel() const { return m_amount; }
    QLabel* notesLabel() const { return m_notes; }
    QPushButton* minusButton() const { return m_minus; }
    QPushButton* plusButton() const { return m_plus; }
    QPushButton* amountButton() const { return m_measured; }
    QComboBox* staffPicker() const { return m_staff; }
    QToolButton* menuButton() const { return m_menu; }

Q_SIGNALS:
    void chosen(const QUuid& lineID);
    void discountRequested(const QUuid& lineID);
    void priceRequested(const QUuid& lineID);
    // A click or a pick is over: the scan field takes the keyboard back.
    void done();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void fillStaff(const CartLine& line);

    POSViewModel& m_pos;
    QUuid m_lineID;
    bool m_selected = false;
    QLabel* m_name;
    QLabel* m_quantity;
    QLabel* m_amount;
    QLabel* m_notes;
    QPushButton* m_minus = nullptr;
    QPushButton* m_plus = nullptr;
    QPushButton* m_measured = nullptr;
    QComboBox* m_staff = nullptr;
    QToolButton* m_menu;
};
