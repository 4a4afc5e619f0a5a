#include "ui/settings/pindialog.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

PinDialog::PinDialog(const QString& title, const QString& note, Save save, QWidget* parent)
    : QDialog(parent)
    , m_save(std::move(save))
    , m_pin(new QLineEdit(this))
    , m_error(new ErrorLabel(this))
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    // A fixed width lets the wrapped note take the height it needs.
    setFixedWidth(420);
    m_pin->setEchoMode(QLineEdit::Password);
    m_pin->setInputMethodHints(Qt::ImhDigitsOnly | Qt::ImhSensitiveData);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    m_saveButton = buttons->addButton(QStringLiteral("Save PIN"), QDialogButtonBox::AcceptRole);
    m_saveButton->setDefault(true);
    Theme::markPrimary(m_saveButton);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(Theme::label(title, Theme::Text::heading, this));
    addLabelledField(layout, QStringLiteral("New PIN"), m_pin);
    layout->addSpacing(2);
    layout->addWidget(Theme::label(note, Theme::Text::note, this));
    layout->addWidget(m_error);
    layout->addSpacing(4);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Not through accepted(): the sheet closes only once the PIN is saved.
    connect(m_saveButton, &QPushButton::clicked, this, &PinDialog::save);
}

void PinDialog::save()
{
    const std::optional<QString> failure = m_save(m_pin->text());
    m_error->setMessage(failure);
    if (!failure) {
        accept();
        return;
    }
    m_pin->selectAll();
    // Room for the message, which the sheet's first size had no line for.
    adjustSize();
}
