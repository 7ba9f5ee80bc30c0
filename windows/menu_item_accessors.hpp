#pragma once
// The fifteen read-only item accessors that ControlWnd and helpWnd share:
// each looks its item up by name in the window's menu bar.
#include "base/runtime_exception.hpp"
#include "shell/menu_item.hpp"
#include "shell/window.hpp"

namespace drav {

template <class W>
class MenuItemAccessors {
 public:
  MenuItem& InfoMenu() const { return Item<MenuItem>("InfoMenu"); }
  MenuItem& InfoItem() const { return Item<MenuItem>("InfoItem"); }
  MenuItem& ControlItem() const { return Item<MenuItem>("ControlItem"); }
  MenuItem& EditMenu() const { return Item<MenuItem>("EditMenu"); }
  MenuItem& EditSelectAll() const { return Item<MenuItem>("EditSelectAll"); }
  MenuItem& UntitledMenu0() const { return Item<MenuItem>("UntitledMenu0"); }
  MenuItem& EditClear() const { return Item<MenuItem>("EditClear"); }
  MenuItem& EditPaste() const { return Item<MenuItem>("EditPaste"); }
  MenuItem& EditCopy() const { return Item<MenuItem>("EditCopy"); }
  MenuItem& EditCut() const { return Item<MenuItem>("EditCut"); }
  MenuItem& UntitledMenu1() const { return Item<MenuItem>("UntitledMenu1"); }
  MenuItem& EditUndo() const { return Item<MenuItem>("EditUndo"); }
  MenuItem& FileMenu() const { return Item<MenuItem>("FileMenu"); }
  PrefsMenuItem& AboutItem() const { return Item<PrefsMenuItem>("AboutItem"); }
  QuitMenuItem& FileQuit() const { return Item<QuitMenuItem>("FileQuit"); }

 private:
  template <class I>
  I& Item(const std::string& name) const {
    const auto& bar = static_cast<const W&>(*this).GetMenuBar();
    if (!bar) throw NilObjectException("the window has no menu bar");
    auto* item = dynamic_cast<I*>(bar->Lookup(name));
    if (item == nullptr) throw IllegalCastException("no menu item \"" + name + "\" of that class");
    return *item;
  }
};

}  // namespace drav
