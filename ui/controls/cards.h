#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;
class QScrollArea;
class QVBoxLayout;

// A white card on the grey ground, padded alike on every screen. What goes on it is laid out top
// to bottom in content().
class Card : public QWidget {
    Q_OBJECT

public:
    explicit Card(QWidget* parent = nullptr);

    QVBoxLayout* content() const { return m_content; }

private:
    QVBoxLayout* m_content;
};

// A heading over a card: one block of a page made of several.
class Section : public QWidget {
    Q_OBJECT

public:
    explicit Section(const QString& heading, QWidget* parent = nullptr);

    Card* card() const { return m_card; }
    QVBoxLayout* content() const;

private:
    Card* m_card;
};

// A figure with its caption above it, added to `layout`. The figure's label is returned; its parent
// widget holds the two, so that they show and hide together.
QLabel* addFigure(QBoxLayout* layout, const QString& caption, QWidget* parent);
// The same on a small card of its own, for the figures that sum up a screen.
QLabel* addFigureCard(QBoxLayout* layout, const QString& caption, QWidget* parent);

// Sections one under another, scrolling when taller than their room, so that what stands above
// them (a title, Save) stays in view. A `maxWidth` keeps a form from stretching across a wide screen.
QScrollArea* makeSectionScroll(const QList<QWidget*>& sections, int spacing, QWidget* parent,
                               int maxWidth = QWIDGETSIZE_MAX);
