#include "ui/controls/sheet.h"

#include "ui/controls/errorlabel.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

Sheet::Sheet(const QString& primaryTitle, QWidget* parent)
    : QDialog(parent)
    , m_heading(Theme::label(QString(), Theme::Text::heading, this))
    , m_form(new QVBoxLayout)
    , m_error(new ErrorLabel(this))
    , m_cancel(new QPushButton(QStringLiteral("Cancel"), this))
    , m_primary(new QPushButton(primaryTitle, this))
{
    setWindowModality(Qt::WindowModal);
    // A title may carry a record's name, which is the user's text.
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    Theme::markPrimary(m_primary);
    m_primary->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(m_heading);
    m_form->setSpacing(12);
    layout->addLayout(m_form);
    layout->addWidget(m_error);
    layout->addSpacing(4);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_primary);
    layout->addLayout(buttons);

    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_primary, &QPushButton::clicked, this, [this] { primaryAction(); });
}

void Sheet::setTitle(const QString& title)
{
    setWindowTitle(title);
    m_heading->setText(title);
}

void Sheet::showError(const std::optional<QString>& message)
{
    m_error->setMessage(message);
    adjustSize();
}
