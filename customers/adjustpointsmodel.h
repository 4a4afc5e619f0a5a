#pragma once

#include "customers/customerentrymodel.h"
#include "customers/loyaltyservice.h"

#include <QString>

#include <functional>
#include <optional>

// The "Adjust Points" sheet: a signed change with a required reason, made by the signed-in user.
class AdjustPointsModel : public CustomerEntryModel {
    Q_OBJECT

public:
    enum class Direction { add, remove };

    static QString title() { return QStringLiteral("Adjust Points"); }
    static QString directionLabel(Direction direction)
    {
        return direction == Direction::add ? QStringLiteral("Add Points") : QStringLiteral("Remove Points");
    }
    static QString pointsTitle() { return QStringLiteral("Points"); }
    static QString pointsHint() { return QStringLiteral("0"); }
    static QString reasonTitle() { return QStringLiteral("Reason (required) — e.g. goodwill, correction"); }
    static QString saveTitle() { return QStringLiteral("Save Adjustment"); }

    AdjustPointsModel(LoyaltyService& loyalty, SessionStore& session, Ref<Customer> customer,
                      std::function<void()> onDone, QObject* parent = nullptr);

    Direction direction() const { return m_direction; }
    void setDirection(Direction direction) { assign(m_direction, direction); }
    QString pointsText() const { return m_pointsText; }
    void setPointsText(const QString& text) { assign(m_pointsText, text); }
    QString reason() const { return m_reason; }
    void setReason(const QString& text) { assign(m_reason, text); }

    // "{name} has {points} points."
    QString balanceLine() const;
    // The trimmed entry as a whole number (0 when it isn't one), signed by the direction.
    qint64 points() const;
    // "New balance: {n} points" while the entry is a whole number above 0.
    std::optional<QString> newBalanceText() const;

    // Whether save() would go through as far as the entry goes; otherwise errorMessage says why.
    bool check();
    // On success calls onDone and returns true; otherwise errorMessage says why. `alongside` is
    // written in the adjustment's own unit of work, after it.
    bool save(const std::function<void()>& alongside = {});

private:
    qint64 enteredPoints() const;

    LoyaltyService& m_loyalty;
    Direction m_direction = Direction::add;
    QString m_pointsText;
    QString m_reason;
};
