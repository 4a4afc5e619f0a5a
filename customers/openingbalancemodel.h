#pragma once

#include "customers/accountsservice.h"
#include "customers/customerentrymodel.h"

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

// The "Opening Balance" sheet: what a customer already owed in the shop's credit book when their
// account started here, and the day it dates from. Entered once; it is a charge on the account,
// never a sale, so takings, tills and reports leave it out.
class OpeningBalanceModel : public CustomerEntryModel {
    Q_OBJECT

public:
    static QString title() { return QStringLiteral("Opening Balance"); }
    static QString amountTitle() { return QStringLiteral("Amount Owed"); }
    static QString amountHint() { return QStringLiteral("0.00"); }
    static QString owedSinceTitle() { return QStringLiteral("Owed Since"); }
    static QString noteTitle() { return QStringLiteral("Note (optional) — e.g. credit book page 12"); }
    static QString saveTitle() { return QStringLiteral("Save Opening Balance"); }

    OpeningBalanceModel(AccountsService& accounts, SessionStore& session, Ref<Customer> customer,
                        std::function<void()> onDone, QObject* parent = nullptr);

    // "What {name} owed before their account was kept here…", under the title.
    QString explanation() const;
    // A money field: "1,250.00" is accepted; text that isn't an amount is refused here, not read as 0.
    QString amountText() const { return m_amountText; }
    void setAmountText(const QString& text) { assign(m_amountText, text); }
    // Why the amount as typed can't be saved; absent while it can, and while nothing is typed.
    std::optional<QString> amountProblem() const;
    // Defaults to today, the latest day allowed.
    QDate owedSince() const { return m_owedSince; }
    void setOwedSince(const QDate& day) { assign(m_owedSince, day); }
    static QDate latestDay();
    QString note() const { return m_note; }
    void setNote(const QString& text) { assign(m_note, text); }

    // For the approval dialog: "₵1,250.00 owed by Kofi since Mar 3, 2026."
    QString summary() const;
    // For the audit log, with its fixed sign: "₵1,250.00 owed since 2026-03-03", and the note.
    QString details() const;
    // The amount as typed, 0 while nothing is.
    double amount() const;

    // Whether save() would go through as far as the entry goes; otherwise amountProblem or
    // errorMessage says why.
    bool check();
    // On success calls onDone and returns true; otherwise errorMessage says why. `alongside` is
    // written in the same unit of work, after the opening balance.
    bool save(const std::function<void()>& alongside = {});

private:
    AccountsService& m_accounts;
    QString m_amountText;
    QDate m_owedSince;
    QString m_note;
};
