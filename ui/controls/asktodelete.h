#pragma once

#include <QString>

#include <functional>

class QWidget;

// Asks over `parent` whether to delete, in a box that goes once answered: "Delete" calls `remove`;
// Cancel, which Return and Escape press, keeps the record.
void askToDelete(QWidget* parent, const QString& question, const QString& consequences,
                 std::function<void()> remove);
