#pragma once

#include "ui/settings/settingssection.h"

#include <QList>

class ApprovalSettingsModel;
class ErrorLabel;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// "Approvals & Audit Log": the six switches that ask a cashier for an admin's PIN, the discount a
// cashier may give alone, and the way to the log, with a warning while nobody could approve.
class ApprovalSettingsSection : public SettingsSection {
    Q_OBJECT

public:
    explicit ApprovalSettingsSection(ApprovalSettingsModel& model, QWidget* parent = nullptr);

    QLabel* noAdminPinWarning() const { return m_warning; }
    QLineEdit* discountLimitField() const { return m_limit; }
    ErrorLabel* discountLimitError() const { return m_limitError; }

Q_SIGNALS:
    void openAuditLog();

private:
    QWidget* discountLimitRow();
    void refresh();

    ApprovalSettingsModel& m_model;
    QLabel* m_warning;
    QList<QCheckBox*> m_switches; // in the model's order
    QLineEdit* m_limit = nullptr;
    QComboBox* m_limitUnit = nullptr;
    ErrorLabel* m_limitError;
    ErrorLabel* m_error;
};
