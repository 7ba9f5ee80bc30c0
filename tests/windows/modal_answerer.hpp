#pragma once
// Answers the modal alerts and dialogs that a handler opens, in order, as a
// user would: each queued answer gets the next modal widget that comes up.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QtTest>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace drav::testing_support {

class ModalAnswerer : public QObject {
 public:
  ModalAnswerer() {
    poll_.setInterval(5);
    connect(&poll_, &QTimer::timeout, this, [this] {
      QWidget* modal = QApplication::activeModalWidget();
      // Marked on the widget itself: a later dialog may reuse the address.
      if (modal == nullptr || modal->property("dravAnswered").toBool() || answers_.empty()) return;
      modal->setProperty("dravAnswered", true);
      auto answer = std::move(answers_.front());
      answers_.pop_front();
      answer(modal);
    });
    poll_.start();
  }

  // Copies the text of a message box as a user quoting it would: a click
  // in the text, Ctrl+A and Ctrl+C. Keeps what reached the clipboard in
  // `messages`, and dismisses the box.
  ModalAnswerer& CopyMessage() {
    answers_.push_back([this](QWidget* modal) {
      QApplication::clipboard()->clear();
      if (auto* text = modal->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QTest::mouseClick(text, Qt::LeftButton);
      }
      if (QWidget* focus = modal->focusWidget()) {
        QTest::keyClick(focus, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(focus, Qt::Key_C, Qt::ControlModifier);
      }
      messages.push_back(QApplication::clipboard()->text().toStdString());
      modal->close();
    });
    return *this;
  }
  // Chooses the file in the open-file dialog as a user who types its full
  // path would.
  ModalAnswerer& ChooseFile(const QString& path) {
    answers_.push_back([path](QWidget* modal) { Choose(qobject_cast<QFileDialog*>(modal), path); });
    return *this;
  }
  // Keeps the folder that the open-file dialog shows in `folders`, then
  // cancels it.
  ModalAnswerer& NoteFolderAndCancel() {
    answers_.push_back([this](QWidget* modal) {
      auto* dialog = qobject_cast<QFileDialog*>(modal);
      folders.push_back(dialog != nullptr ? dialog->directory().absolutePath() : QStringLiteral("<not a file dialog>"));
      modal->close();
    });
    return *this;
  }
  ModalAnswerer& Cancel() {
    answers_.push_back([](QWidget* modal) {
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
    });
    return *this;
  }

  bool Done() const { return answers_.empty(); }
  std::vector<std::string> messages;
  QStringList folders;

 private:
  // The path goes into the name field, where a user types it; selectFile()
  // would not do: while that field has the focus it selects only in the list
  // view, which may not have loaded the folder yet, and accept() then finds
  // nothing chosen. Whatever keeps the dialog up, it is tried again until
  // it has really closed.
  static void Choose(QPointer<QFileDialog> dialog, const QString& path) {
    if (dialog.isNull() || !dialog->isVisible()) return;
    if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
      name->setText(path);
      QTest::keyClick(name, Qt::Key_Return);
    } else {
      static_cast<QDialog*>(dialog.data())->accept();
    }
    if (!dialog.isNull() && dialog->isVisible()) QTimer::singleShot(5, dialog, [dialog, path] { Choose(dialog, path); });
  }

  QTimer poll_;
  std::deque<std::function<void(QWidget*)>> answers_;
};

}  // namespace drav::testing_support
