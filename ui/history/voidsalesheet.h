#pragma once

#include "ui/controls/sheet.h"
#include "ui/history/voidsalesheetmodel.h"

class AppEnvironment;
class QLineEdit;

// "Void {invoice}?": the reason, what the void will do, and Void Sale, which asks an admin's PIN
// first where the settings want one. A refusal keeps the sheet open with the reason kept.
class VoidSaleSheet : public Sheet {
    Q_OBJECT

public:
    // onDone runs once the sale is voided; then the sheet closes.
    VoidSaleSheet(Ref<Sale> sale, AppEnvironment& environment, SessionStore& session,
                  std::function<void()> onDone, QWidget* parent);

    VoidSaleSheetModel& model() { return m_model; }
    QLineEdit* reasonField() const { return m_reason; }

protected:
    void primaryAction() override;

private:
    AppEnvironment& m_environment;
    VoidSaleSheetModel m_model;
    QLineEdit* m_reason;
};
