#pragma once

#include <QString>

class QWidget;

// A centred title with a note under it, standing where a list or a detail has nothing to show.
QWidget* makeEmptyState(const QString& title, const QString& note, QWidget* parent = nullptr);
