#pragma once

#include "ui/controls/sheet.h"

#include <functional>

class QLineEdit;

// A small sheet asking for one amount of money for a cart line: "Line Discount" and "Change
// Price". Text that isn't an amount is refused here, in the sheet; what an amount then does is
// the action's, which says whether it went through.
class AmountSheet : public Sheet {
    Q_OBJECT

public:
    using Apply = std::function<bool(const QString& text)>;

    AmountSheet(const QString& title, const QString& note, const QString& fieldTitle, const QString& text, Apply apply,
                QWidget* parent);

    QLineEdit* field() const { return m_field; }

protected:
    void primaryAction() override;

private:
    QLineEdit* m_field;
    Apply m_apply;
};
