#include "ui/settings/usereditsheet.h"

#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {
// The role picker's segments, in the order of the Add User form.
constexpr int adminSegment = 0;
constexpr int cashierSegment = 1;
} // namespace

UserEditSheet::UserEditSheet(const QString& title, const UserEdit& edit, Save save, QWidget* parent)
    : Sheet(QStringLiteral("Save"), parent)
    , m_save(std::move(save))
    , m_name(new QLineEdit(edit.name, this))
    , m_role(new SegmentedControl({QStringLiteral("Admin"), QStringLiteral("Cashier")}, this))
    , m_password(new QLineEdit(this))
    , m_confirm(new QLineEdit(this))
{
    setTitle(title);
    // A fixed width lets the wrapped note take the height it needs.
    setFixedWidth(440);
    m_role->setCurrentIndex(edit.role == UserRole::admin ? adminSegment : cashierSegment);
    m_role->setAccessibleName(QStringLiteral("Role"));
    for (QLineEdit* secret : {m_password, m_confirm}) {
        secret->setEchoMode(QLineEdit::Password);
        secret->setInputMethodHints(Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
    }

    addLabelledField(form(), QStringLiteral("Full Name"), m_name);
    addLabelledField(form(), QStringLiteral("Role"), m_role);
    form()->addSpacing(4);
    addLabelledField(form(), QStringLiteral("New Password"), m_password);
    addLabelledField(form(), QStringLiteral("Confirm Password"), m_confirm);
    form()->addWidget(Theme::label(UserAccountsViewModel::editNote(), Theme::Text::note, this));
}

UserEdit UserEditSheet::typed() const
{
    return UserEdit{m_name->text(), m_role->currentIndex() == adminSegment ? UserRole::admin : UserRole::cashier,
                    m_password->text(), m_confirm->text()};
}

void UserEditSheet::primaryAction()
{
    const std::optional<QString> failure = m_save(typed());
    showError(failure);
    if (!failure)
        accept();
}
