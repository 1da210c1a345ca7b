target_sources(vosk_lists PRIVATE
  listmodel.h listmodel_p.h listmodel.cpp listbold.cpp listsort.cpp
  liststore.h liststore.cpp
  cellformat.h cellformat.cpp
  sortkeys.h sortkeys.cpp
  wildcard.h wildcard.cpp
  finditem.h finditem.cpp)
target_sources(vosk_lists_ui PRIVATE
  listviewsort.h listviewsort.cpp
  frmfind.h frmfind.cpp)
# The find dialog registers itself with the child-window manager.
target_link_libraries(vosk_lists_ui PUBLIC vosk_views_ui)
