# The pictures of the image store, drawn at build time into the program folder's images/ folder.
add_library(vosk_gifwriter STATIC makeimages/gifwriter.h makeimages/gifwriter.cpp)
target_link_libraries(vosk_gifwriter PUBLIC Qt6::Gui)
target_include_directories(vosk_gifwriter PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/makeimages)

add_executable(vosk-makeimages makeimages/main.cpp makeimages/icons.h makeimages/icons.cpp
  makeimages/scenes.h makeimages/scenes.cpp)
target_link_libraries(vosk-makeimages PRIVATE vosk_gifwriter Qt6::Gui)

set(VOSK_IMAGES_STAMP ${CMAKE_BINARY_DIR}/images/.stamp)
add_custom_command(
  OUTPUT ${VOSK_IMAGES_STAMP}
  BYPRODUCTS ${CMAKE_BINARY_DIR}/images/ITEM_ICON/0.gif ${CMAKE_BINARY_DIR}/images/IMAGE/BG_VOSK.GIF
             ${CMAKE_BINARY_DIR}/images/IMAGE/SPLASH.GIF
  COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:vosk-makeimages> ${CMAKE_BINARY_DIR}/images
  COMMAND ${CMAKE_COMMAND} -E touch ${VOSK_IMAGES_STAMP}
  DEPENDS vosk-makeimages
  COMMENT "Drawing the item icons and pictures")
add_custom_target(vosk_images ALL DEPENDS ${VOSK_IMAGES_STAMP})
# The program is defined later, in src/; the dependency is added once every folder has been read.
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL add_dependencies vosk vosk_images)
