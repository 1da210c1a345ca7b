# The views' sources: type helpers, the equipment query, the tree builders and the view texts in
# vosk_views; the windows in vosk_views_ui.
target_sources(vosk_views PRIVATE
  equiptypes.h equiptypes.cpp
  modmain.h modmain.cpp
  buildtree.h buildtree.cpp
  mobtrees.h mobtrees.cpp
  recordtrees.h recordtrees.cpp
  propertysheet.h propertysheet.cpp
  openviews.h openviews.cpp)
target_sources(vosk_views_ui PRIVATE
  treeimages.h treeimages.cpp
  viewwidgets.h viewwidgets.cpp
  viewnav.h viewnav.cpp
  printsheet.h printsheet.cpp
  frmequipment.h frmequipment.cpp viewequip.cpp
  frmbuildview.h frmbuildview.cpp
  frmmobs.h frmmobs.cpp
  frmrecord.h frmrecord.cpp)
