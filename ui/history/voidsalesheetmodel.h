#pragma once

#include "records/sale.h"
#include "viewmodel/viewmodel.h"

#include <QStringList>

#include <functional>

class AppEnvironment;
class SessionStore;

// The void sheet's state: the sale, the reason, what the void will do told in plain lines, and
// the void itself with its audit row, saved together, and the drawer when cash goes back. It
// stands on the sales service, the approvals and the drawer at once, so it lives beside its sheet.
class VoidSaleSheetModel : public ViewModel {
    Q_OBJECT

public:
    VoidSaleSheetModel(Ref<Sale> sale, AppEnvironment& environment, SessionStore& session,
                       std::function<void()> onDone, QObject* parent = nullptr);

    Ref<Sale> sale() const { return m_sale; }
    QString title() const;
    static QString reasonHint();
    QString reason() const { return m_reason; }
    void setReason(const QString& text) { assign(m_reason, text); }
    bool canVoid() const { return !m_reason.trimmed().isEmpty(); }

    // What the sale's payments were in cash (a method nobody knows counts as cash) and on the
    // customer's account, to the cent, as they were when the sheet opened.
    double cashPaid() const { return m_cashPaid; }
    double onAccount() const { return m_onAccount; }
    // What the void will do, one line a consequence.
    QStringList notes() const;

    bool needsApproval() const;
    QString approvalSummary() const;

    // The void and its row in the log, then the drawer when cash has to go back to the customer,
    // then onDone. False with the reason in errorMessage when it was refused or couldn't be saved.
    bool performVoid(const Ref<User>& approvedBy);

private:
    QString money(double amount) const;

    Ref<Sale> m_sale;
    AppEnvironment& m_environment;
    SessionStore& m_session;
    std::function<void()> m_onDone;
    QString m_reason;
    double m_cashPaid = 0;
    double m_onAccount = 0;
};
