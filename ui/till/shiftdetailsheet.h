#pragma once

#include "till/shiftdetailmodel.h"
#include "ui/controls/sheet.h"

class QLabel;
class QTableWidget;

// The detail of one past shift over the till screen: who opened and closed it and when, the cash
// it was closed on, how many sales it took, and each pay-in and pay-out. Read-only: "Done" closes it.
class ShiftDetailSheet : public Sheet {
    Q_OBJECT

public:
    // Money is shown with `currencySymbol`, as on the rest of the till screen.
    ShiftDetailSheet(const ShiftDetail& detail, const QString& currencySymbol, QWidget* parent = nullptr);

    QUuid shiftID() const { return m_shiftID; }
    QLabel* openedLabel() const { return m_opened; }
    QLabel* closedLabel() const { return m_closed; }
    QLabel* varianceFigure() const { return m_variance; }
    QLabel* salesFigure() const { return m_sales; }
    QTableWidget* movementList() const { return m_movements; }

protected:
    void primaryAction() override;

private:
    QUuid m_shiftID;
    QLabel* m_opened;
    QLabel* m_closed;
    QLabel* m_variance;
    QLabel* m_sales;
    QTableWidget* m_movements;
};
