#pragma once

#include <QScrollArea>

// `page` in a frameless area that scrolls down, never sideways: the body of a screen, detail or
// sheet whose content may outgrow it.
QScrollArea* makeScrollPage(QWidget* page, QWidget* parent);
