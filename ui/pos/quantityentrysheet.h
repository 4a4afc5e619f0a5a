#pragma once

#include "pos/quantityentry.h"
#include "ui/controls/sheet.h"

#include <functional>

class QLabel;
class QLineEdit;

// The amount of a measured product, to add it or to change a line: typed, or read off the scale.
// The field has the focus as the sheet opens; Return takes the amount once it is one the unit
// allows, Escape leaves the cart as it was.
class QuantityEntrySheet : public Sheet {
    Q_OBJECT

public:
    QuantityEntrySheet(QuantityEntry& entry, std::function<void(double quantity)> onDone,
                       std::function<void()> onCancel, QWidget* parent = nullptr);

    QLineEdit* amountField() const { return m_amount; }
    QLabel* unitLabel() const { return m_unit; }
    QLabel* hintLabel() const { return m_hint; }
    QLabel* lineTotalLabel() const { return m_lineTotal; }
    QPushButton* confirmButton() const { return primaryButton(); }

public Q_SLOTS:
    void reject() override;

private:
    void primaryAction() override;
    void showEntry();

    QuantityEntry& m_entry;
    std::function<void(double)> m_onDone;
    std::function<void()> m_onCancel;
    QLineEdit* m_amount;
    QLabel* m_unit;
    QLabel* m_hint;
    QLabel* m_lineTotal;
};
