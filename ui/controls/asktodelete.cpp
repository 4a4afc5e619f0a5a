#include "ui/controls/asktodelete.h"

#include <QMessageBox>
#include <QPushButton>

void askToDelete(QWidget* parent, const QString& question, const QString& consequences,
                 std::function<void()> remove)
{
    auto* box = new QMessageBox(QMessageBox::Warning, question, question, QMessageBox::NoButton, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setInformativeText(consequences);
    QPushButton* deleteButton = box->addButton(QStringLiteral("Delete"), QMessageBox::DestructiveRole);
    QPushButton* cancel = box->addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    QObject::connect(box, &QMessageBox::buttonClicked, parent,
                     [deleteButton, remove = std::move(remove)](QAbstractButton* button) {
                         if (button == deleteButton)
                             remove();
                     });
    box->open();
}
