#pragma once

#include "records/enums.h"
#include "records/saleitem.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class RefundViewModel;

// One line of the original sale in the refund form: what was bought, what is left to return, and
// how much of it comes back now: typed for a measured unit, stepped by one for a counted one.
class RefundLineRow : public QWidget {
    Q_OBJECT

public:
    RefundLineRow(RefundViewModel& model, Ref<SaleItem> item, QWidget* parent = nullptr);

    Ref<SaleItem> item() const { return m_item; }
    // Shows the quantity the form holds now.
    void refresh();

    QLabel* detailLabel() const { return m_detail; }
    // The typed field, or the stepper's value and buttons; the other kind is null.
    QLineEdit* quantityField() const { return m_field; }
    QLabel* stepperValue() const { return m_value; }
    QPushButton* lessButton() const { return m_less; }
    QPushButton* moreButton() const { return m_more; }

private:
    void step(double by);
    void showTypedQuantity();

    RefundViewModel& m_model;
    Ref<SaleItem> m_item;
    SellingUnit m_unit;
    QLabel* m_detail;
    QLineEdit* m_field = nullptr;
    QLabel* m_value = nullptr;
    QPushButton* m_less = nullptr;
    QPushButton* m_more = nullptr;
};
