#pragma once

#include "access/accountapprovals.h"
#include "customers/adjustpointsmodel.h"
#include "ui/controls/sheet.h"

class AppEnvironment;
class QLabel;
class QLineEdit;
class SegmentedControl;

// "Adjust Points" over the customer's detail: points added or removed by hand, with a reason.
// Stays open with the reason when the change is refused; a cashier's waits for an admin's PIN.
class AdjustPointsSheet : public Sheet {
    Q_OBJECT

public:
    AdjustPointsSheet(AppEnvironment& environment, SessionStore& session, const Ref<Customer>& customer,
                      QWidget* parent = nullptr);

    AdjustPointsModel& model() { return m_model; }
    SegmentedControl* directionPicker() const { return m_direction; }
    QLineEdit* pointsField() const { return m_points; }
    QLineEdit* reasonField() const { return m_reason; }
    QLabel* newBalanceLabel() const { return m_newBalance; }
    QPushButton* saveButton() const { return primaryButton(); }

private:
    void primaryAction() override;
    void showNewBalance();

    AppEnvironment& m_environment;
    AccountApprovals m_approvals;
    AdjustPointsModel m_model;
    SegmentedControl* m_direction;
    QLineEdit* m_points;
    QLineEdit* m_reason;
    QLabel* m_newBalance;
};
