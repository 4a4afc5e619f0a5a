#include "ui/settings/settingssection.h"

#include "ui/style/theme.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
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

QGridLayout* SettingsSection::addForm(QVBoxLayout* card)
{
    auto* form = new QGridLayout;
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(10);
    form->setColumnStretch(1, 1);
    card->addLayout(form);
    return form;
}

QLabel* SettingsSection::addRow(QGridLayout* form, const QString& label, QWidget* field)
{
    const int row = form->rowCount();
    QLabel* caption = nullptr;
    if (!label.isEmpty()) {
        caption = new QLabel(label, this);
        caption->setBuddy(field);
        form->addWidget(caption, row, 0, Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (field->accessibleName().isEmpty())
        field->setAccessibleName(label);
    form->addWidget(field, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
    return caption;
}

void SettingsSection::addNote(QGridLayout* form, QLabel* note)
{
    note->setWordWrap(true);
    form->addWidget(note, form->rowCount(), 1);
}

void SettingsSection::saveWhenEdited(QLineEdit* edit, std::function<void(const QString&)> save)
{
    QObject::connect(edit, &QLineEdit::editingFinished, edit, [edit, save = std::move(save)] {
        if (edit->isModified()) {
            edit->setModified(false);
            save(edit->text());
        }
    });
}
