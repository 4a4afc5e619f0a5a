#include "ui/settings/settingssection.h"

#include "ui/style/theme.h"

#include <QLabel>
#include <QVBoxLayout>

SettingsSection::SettingsSection(const QString& heading, QWidget* parent)
    : QWidget(parent)
    , m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(10);
    m_layout->addWidget(Theme::label(heading, Theme::Text::heading, this));
}

QVBoxLayout* SettingsSection::addCard()
{
    auto* card = new QWidget(this);
    Theme::markCard(card);
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(10);
    m_layout->addWidget(card);
    return layout;
}

void SettingsSection::addSubheading(const QString& text)
{
    m_layout->addSpacing(8);
    m_layout->addWidget(Theme::label(text, Theme::Text::strong, this));
}
