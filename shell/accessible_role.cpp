#include "shell/accessible_role.hpp"

#include <QAccessibleWidget>
#include <QWidget>

namespace drav {
namespace {

constexpr const char* kRoleProperty = "dravAccessibleRole";

// Asked before Qt's own factory, for every class of the object from the
// most derived up; a widget without a role of ours is left to Qt.
QAccessibleInterface* WithRole(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return nullptr;
  const QVariant role = widget->property(kRoleProperty);
  if (!role.isValid()) return nullptr;
  return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void SetAccessibleRole(QWidget& widget, QAccessible::Role role) {
  widget.setProperty(kRoleProperty, static_cast<int>(role));
  // With a screen reader on, setting the widget's text has already made its
  // interface, in its old role; that one goes, and the next query makes it
  // anew. The window is not on the screen yet, so no reader holds it.
  if (!QAccessible::isActive()) return;
  QAccessibleInterface* made = QAccessible::queryAccessibleInterface(&widget);
  if (made != nullptr && made->role() != role) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
}

void InstallAccessibleRoles() { QAccessible::installFactory(WithRole); }

}  // namespace drav
