#include "ui/controls/formfooter.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/savekey.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

FormFooter::FormFooter(const QString& deleteTitle, QWidget* parent)
    : QWidget(parent)
    , m_delete(new QPushButton(deleteTitle, this))
    , m_notSaved(Theme::label(QStringLiteral("Not saved yet"), Theme::Text::note, this))
    , m_error(new ErrorLabel(this))
    , m_saved(Theme::label(QStringLiteral("Saved"), Theme::Text::note, this))
    , m_save(new QPushButton(QStringLiteral("Save"), this))
{
    m_saved->hide();
    m_notSaved->hide();
    Theme::markPrimary(m_save);
    SaveKey::attach(m_save);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(12);
    line->addWidget(m_delete);
    line->addWidget(m_notSaved);
    line->addWidget(m_error, 1);
    line->addStretch();
    line->addWidget(m_saved);
    line->addWidget(m_save);
}

void FormFooter::showSaveResult(const std::optional<QString>& failure)
{
    m_error->setMessage(failure);
    m_saved->setVisible(!failure);
}

void FormFooter::markEdited()
{
    m_saved->hide();
}

void FormFooter::clear()
{
    m_error->setMessage(std::nullopt);
    m_saved->hide();
}

void FormFooter::showNewRecord(bool isNew)
{
    m_delete->setVisible(!isNew);
    m_notSaved->setVisible(isNew);
}
