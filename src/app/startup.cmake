# Start-up and shutdown: the checks and the way out (no widgets), the start sequence with the splash,
# and the prompt service on screen.
target_sources(vosk_app PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/modmain_app.h ${CMAKE_CURRENT_LIST_DIR}/modmain_app.cpp
  ${CMAKE_CURRENT_LIST_DIR}/singleinstance.h ${CMAKE_CURRENT_LIST_DIR}/singleinstance.cpp)
target_sources(vosk_app_ui PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/modinit.h ${CMAKE_CURRENT_LIST_DIR}/modinit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/frmsplash.h ${CMAKE_CURRENT_LIST_DIR}/frmsplash.cpp
  ${CMAKE_CURRENT_LIST_DIR}/qtprompt.h ${CMAKE_CURRENT_LIST_DIR}/qtprompt.cpp)
