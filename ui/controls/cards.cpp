#include "ui/controls/cards.h"

#include "ui/controls/scrollpage.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {
QLabel* fillFigure(QWidget* figure, const QString& caption, const QMargins& padding)
{
    auto* column = new QVBoxLayout(figure);
    column->setContentsMargins(padding);
    column->setSpacing(2);
    auto* value = Theme::label(QString(), Theme::Text::heading, figure);
    value->setAccessibleName(caption);
    auto* title = Theme::label(caption, Theme::Text::note, figure);
    // A caption of two words broken over two lines reads as two figures.
    title->setWordWrap(false);
    column->addWidget(title);
    column->addWidget(value);
    return value;
}
} // namespace

Card::Card(QWidget* parent)
    : QWidget(parent)
    , m_content(new QVBoxLayout(this))
{
    Theme::markCard(this);
    m_content->setContentsMargins(20, 16, 20, 16);
    m_content->setSpacing(12);
}

Section::Section(const QString& heading, QWidget* parent)
    : QWidget(parent)
    , m_card(new Card(this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(Theme::label(heading, Theme::Text::heading, this));
    column->addWidget(m_card);
}

QVBoxLayout* Section::content() const
{
    return m_card->content();
}

QLabel* addFigure(QBoxLayout* layout, const QString& caption, QWidget* parent)
{
    auto* figure = new QWidget(parent);
    layout->addWidget(figure);
    return fillFigure(figure, caption, QMargins());
}

QLabel* addFigureCard(QBoxLayout* layout, const QString& caption, QWidget* parent)
{
    auto* card = new QWidget(parent);
    Theme::markCard(card);
    layout->addWidget(card);
    return fillFigure(card, caption, QMargins(16, 12, 16, 12));
}

QScrollArea* makeSectionScroll(const QList<QWidget*>& sections, int spacing, QWidget* parent, int maxWidth)
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 12, 12);
    column->setSpacing(spacing);
    for (QWidget* section : sections) {
        section->setMaximumWidth(maxWidth);
        column->addWidget(section);
    }
    column->addStretch();
    return makeScrollPage(page, parent);
}
