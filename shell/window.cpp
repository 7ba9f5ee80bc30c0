#include "shell/window.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QLayout>
#include <QMenuBar>

#include "shell/control.hpp"
#include "shell/handler_guard.hpp"
#include "shell/key_text.hpp"
#include "shell/menu_bar_view.hpp"
#include "shell/qt_convert.hpp"
#include "shell/text_edit.hpp"
#include "shell/window_registry.hpp"

namespace drav {

Window::Window(std::string fullClassName) : className_(std::move(fullClassName)), content_(new QWidget(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  // The frame itself takes no focus: the window's keys go to its controls,
  // and to the window only while none of them holds the focus.
  setCentralWidget(content_);
  internal::RegisterWindow(className_, this);
  registered_ = true;
}

Window::~Window() {
  // The menus read this window's handlers whenever the focus moves, and the
  // focus moves while QWidget takes the window down: they go first.
  delete menuBarView_;
  menuBarView_ = nullptr;
  Unregister();
}

void Window::Unregister() {
  if (registered_) internal::UnregisterWindow(className_, this);
  registered_ = false;
}

void Window::Constructor() {
  Layout();
  CreateControls();
  AddMenuHandlers();
  ApplyFrame();
  if (menuBar_) {
    menuBarView_ = new MenuBarView(*this, *menuBar_);
    menuBar()->setVisible(menuBarVisible_);
    for (Control* control : creationOrder_) {
      if (auto* edit = dynamic_cast<TextEdit*>(control)) {
        edit->WatchState(menuBarView_, [view = menuBarView_] { view->UpdateEnabling(); });
      }
    }
  }
  for (Control* control : creationOrder_) control->Opened();
  if (visible_) Show();
}

void Window::Show() {
  if (!placed_) PlaceOnFirstShow();
  show();
  raise();
  activateWindow();
}

void Window::Hide() { hide(); }

// DefaultLocation 0 centres a new window on the screen; 3 sets it down a
// little below and right of the window in front, as a document would open.
void Window::PlaceOnFirstShow() {
  placed_ = true;
  // The sheet's size is that of the content area; the menu bar stands
  // above it. Asking the frame for its own size hint instead would give a
  // window without a layout the bare minimum of 200 x 100.
  if (resizeable_) {
    resize(size_.width(), size_.height() + MenuBarHeight());
  } else {
    // A fixed window takes its size from its layout only as it first
    // shows; until then it would be centred as Qt's default 640 x 480.
    layout()->activate();
  }
  const QWidget* front = QApplication::activeWindow();
  if (defaultLocation_ == 3 && front != nullptr && front != this) {
    move(front->frameGeometry().topLeft() + QPoint(40, 40));
  } else if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    QRect frame = frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    move(frame.topLeft());
  }
}

int Window::MenuBarHeight() const {
  const QWidget* bar = menuWidget();
  return bar != nullptr && !bar->isHidden() ? bar->sizeHint().height() : 0;
}

void Window::AddControl(const std::string& name, Control* control) {
  control->SetName(name);
  if (auto* rect = dynamic_cast<RectControl*>(control)) {
    rect->Widget()->setParent(content_);
    rect->Widget()->show();  // until its sheet says otherwise
  } else {
    control->setParent(this);
  }
  controls_[name] = control;
  creationOrder_.push_back(control);
}

Control* Window::ControlByName(const std::string& name) const {
  const auto found = controls_.find(name);
  return found == controls_.end() ? nullptr : found->second;
}

void Window::AddMenuHandler(const std::string& itemName, std::function<bool()> handler) {
  menuHandlers_[itemName] = std::move(handler);
}

bool Window::RunMenuHandler(const std::string& itemName) {
  const auto found = menuHandlers_.find(itemName);
  return found != menuHandlers_.end() && found->second();
}

bool Window::ApplyProperty(const Property& p) {
  const auto integer = [&] { return static_cast<int>(std::get<std::int64_t>(p.value)); };
  const auto flag = [&] { return std::get<bool>(p.value); };
  const std::string& n = p.name;
  if (n == "Title") {
    setWindowTitle(ToQ(std::get<std::string>(p.value)));
  } else if (n == "Width") {
    size_.setWidth(integer());
  } else if (n == "Height") {
    size_.setHeight(integer());
  } else if (n == "MinimumWidth") {
    minimum_.setWidth(integer());
  } else if (n == "MinimumHeight") {
    minimum_.setHeight(integer());
  } else if (n == "MaximumWidth") {
    maximum_.setWidth(integer());
  } else if (n == "MaximumHeight") {
    maximum_.setHeight(integer());
  } else if (n == "Type") {
    type_ = integer();
  } else if (n == "Resizeable") {
    resizeable_ = flag();
  } else if (n == "HasCloseButton") {
    closeButton_ = flag();
  } else if (n == "HasMinimizeButton") {
    minimizeButton_ = flag();
  } else if (n == "HasMaximizeButton") {
    maximizeButton_ = flag();
  } else if (n == "Visible") {
    visible_ = flag();
  } else if (n == "DefaultLocation") {
    defaultLocation_ = integer();
  } else if (n == "MenuBarVisible") {
    menuBarVisible_ = flag();
  } else if (n == "HasBackgroundColor") {
    content_->setAutoFillBackground(flag());
  } else if (n == "BackgroundColor") {
    QPalette palette = content_->palette();
    palette.setColor(QPalette::Window, ToQ(std::get<Color>(p.value)));
    content_->setPalette(palette);
  } else {
    return false;
  }
  return true;
}

// Frame and size follow the sheet: Type 2 is a plain panel with no title and
// no window buttons; a window that is not resizeable keeps its content size.
void Window::ApplyFrame() {
  Qt::WindowFlags flags = Qt::Window;
  if (type_ == 2) {
    flags |= Qt::FramelessWindowHint;
  } else {
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (closeButton_) flags |= Qt::WindowCloseButtonHint;
    if (minimizeButton_) flags |= Qt::WindowMinimizeButtonHint;
    if (maximizeButton_ && resizeable_) flags |= Qt::WindowMaximizeButtonHint;
  }
  setWindowFlags(flags);
  if (resizeable_) {
    content_->setMinimumSize(minimum_);
    content_->setMaximumSize(maximum_);
  } else {
    content_->setFixedSize(size_);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
  }
}

void Window::closeEvent(QCloseEvent* event) {
  internal::GuardHandler([this] { Event_Close(); });
  // From here on the window is gone: the next mention makes a new one.
  Unregister();
  event->accept();
}

void Window::keyPressEvent(QKeyEvent* event) {
  const std::optional<std::string> text = KeyText(*event);
  bool consumed = false;
  if (text && !internal::GuardHandler([&] { consumed = Event_KeyDown(*text); })) return;
  if (consumed) return;
  QMainWindow::keyPressEvent(event);
}

void Window::mousePressEvent(QMouseEvent* event) {
  const QPoint at = content_->mapFrom(this, event->position().toPoint());
  bool consumed = false;
  if (!internal::GuardHandler([&] { consumed = Event_MouseDown(at.x(), at.y()); }) || consumed) return;
  QMainWindow::mousePressEvent(event);
}

}  // namespace drav
