vosk_add_test(tst_liststatements SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_liststatements.cpp LIBS vosk_app)

# The window over a sample database in a temporary program folder; the drawn pictures are linked in
# so that the background can be seen.
foreach(t tst_mainwindow tst_mainwindow_actions)
  vosk_add_test(${t} SOURCES ${CMAKE_CURRENT_LIST_DIR}/${t}.cpp ${CMAKE_CURRENT_LIST_DIR}/mainwindow_fixture.h
                ${CMAKE_CURRENT_LIST_DIR}/mainwindow_fixture.cpp LIBS vosk_app_ui)
  target_compile_definitions(${t} PRIVATE VOSK_IMAGES_DIR="${CMAKE_BINARY_DIR}/images")
  if(TARGET vosk_images)
    add_dependencies(${t} vosk_images)
  endif()
endforeach()
