#pragma once
// Answers the modal alerts and dialogs that a handler opens, in order, as a
// user would: each queued answer gets the next modal widget that comes up.
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>
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

  // Dismisses a message box and keeps its text.
  ModalAnswerer& AcceptMessage() {
    answers_.push_back([this](QWidget* modal) {
      auto* box = qobject_cast<QMessageBox*>(modal);
      seen.push_back(box != nullptr ? box->text().toStdString() : "<not a message box>");
      modal->close();
    });
    return *this;
  }
  // Chooses the file in the open-file dialog; `then` runs after the choice.
  ModalAnswerer& ChooseFile(const QString& path, std::function<void()> then = {}) {
    answers_.push_back([this, path, then](QWidget* modal) {
      auto* dialog = qobject_cast<QFileDialog*>(modal);
      seen.push_back(dialog != nullptr ? "<file dialog>" : "<not a file dialog>");
      if (dialog != nullptr) {
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept();
      }
      if (then) then();
    });
    return *this;
  }
  ModalAnswerer& Cancel() {
    answers_.push_back([this](QWidget* modal) {
      seen.push_back(qobject_cast<QFileDialog*>(modal) != nullptr ? "<file dialog>" : "<other>");
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
    });
    return *this;
  }

  bool Done() const { return answers_.empty(); }
  // What each answered modal was: a message's text, or "<file dialog>".
  std::vector<std::string> seen;

 private:
  QTimer poll_;
  std::deque<std::function<void(QWidget*)>> answers_;
};

}  // namespace drav::testing_support
