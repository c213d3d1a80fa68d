#include "automation/controls/ole_control.h"

namespace tornby::automation {

void* OleControl::find_ole_interface(REFIID iid) {
  if (iid == IID_IOleObject) return static_cast<IOleObject*>(this);
  if (iid == IID_IOleControl) return static_cast<IOleControl*>(this);
  if (iid == IID_IOleInPlaceObject || iid == IID_IOleWindow) return static_cast<IOleInPlaceObject*>(this);
  if (iid == IID_IOleInPlaceActiveObject) return static_cast<IOleInPlaceActiveObject*>(this);
  if (iid == IID_IViewObject || iid == IID_IViewObject2) return static_cast<IViewObject2*>(this);
  if (iid == IID_IPersist || iid == IID_IPersistStreamInit) return static_cast<IPersistStreamInit*>(this);
  if (iid == IID_IPersistStorage) return static_cast<IPersistStorage*>(this);
  if (iid == IID_ISpecifyPropertyPages) return static_cast<ISpecifyPropertyPages*>(this);
  if (iid == IID_IPerPropertyBrowsing) return static_cast<IPerPropertyBrowsing*>(this);
  if (iid == __uuidof(ICategorizeProperties)) return static_cast<ICategorizeProperties*>(this);
  if (iid == IID_IQuickActivate) return static_cast<IQuickActivate*>(this);
  if (iid == IID_IDataObject) return static_cast<IDataObject*>(this);
  if (iid == IID_IPersistPropertyBag) return static_cast<IPersistPropertyBag*>(this);
  return nullptr;
}

}  // namespace tornby::automation
