#pragma once
#include <QAccessible>

class QWidget;

namespace drav {

// What a screen reader is told a control is, where the widget it is made
// of would say otherwise: a read-only caption field is a label, a picture
// surface a graphic. Set before the widget is first shown.
void SetAccessibleRole(QWidget& widget, QAccessible::Role role);

// Makes the roles set above count; called once by the application.
void InstallAccessibleRoles();

}  // namespace drav
