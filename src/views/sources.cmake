# The views' sources: type helpers, the equipment query, the tree builders and the view texts in
# vosk_views; the windows in vosk_views_ui.
target_sources(vosk_views PRIVATE
  equiptypes.h equiptypes.cpp
  modmain.h modmain.cpp
  buildtree.h buildtree.cpp
  mobtrees.h mobtrees.cpp)
