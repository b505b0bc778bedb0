#include "controls/QtMessageBoxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "controls/QtText.h"

namespace zarn {

namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Stop:
            return QMessageBox::Critical;
        case BoxIcon::Question:
            return QMessageBox::Question;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Information:
            break;
    }
    return QMessageBox::Information;
}

// While the user is busy in another program none of the windows is active.
QWidget* Owner() {
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

}  // namespace

BoxAnswer QtMessageBoxes::Show(const BoxMessage& message) {
    const bool isQuestion = message.buttons == BoxButtons::YesNo;
    if (qApp == nullptr) {
        return isQuestion ? BoxAnswer::No : BoxAnswer::Ok;
    }
    QMessageBox box(IconOf(message.icon), ToQt(message.title),
                    ToQt(message.text).replace('\r', '\n'),
                    isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, Owner());
    box.setTextFormat(Qt::PlainText);
    if (isQuestion) {
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    }
    for (QAbstractButton* button : box.buttons()) {
        button->setIcon({});
    }
    const int answer = box.exec();
    if (!isQuestion) {
        return BoxAnswer::Ok;
    }
    return answer == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

bool IsBoxInFront() {
    const QWidget* front = QApplication::activeModalWidget();
    return qobject_cast<const QMessageBox*>(front) != nullptr ||
           qobject_cast<const QFileDialog*>(front) != nullptr;
}

}  // namespace zarn
