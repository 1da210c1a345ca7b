# The main window: list statements and stored layout (vosk_app), the window itself (vosk_app_ui).
target_sources(vosk_app PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/liststatements.h ${CMAKE_CURRENT_LIST_DIR}/liststatements.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mainsettings.h ${CMAKE_CURRENT_LIST_DIR}/mainsettings.cpp)
target_sources(vosk_app_ui PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/frmmain.h ${CMAKE_CURRENT_LIST_DIR}/frmmain_p.h
  ${CMAKE_CURRENT_LIST_DIR}/frmmain.cpp ${CMAKE_CURRENT_LIST_DIR}/frmmain_filters.cpp
  ${CMAKE_CURRENT_LIST_DIR}/frmmain_list.cpp ${CMAKE_CURRENT_LIST_DIR}/frmmain_menus.cpp
  ${CMAKE_CURRENT_LIST_DIR}/frmmain_settings.cpp)
