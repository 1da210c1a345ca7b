# The list statements, and the window over a sample database in a temporary program folder.
vosk_add_test(tst_liststatements SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_liststatements.cpp LIBS vosk_app)
vosk_add_test(tst_mainwindow SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_mainwindow.cpp LIBS vosk_app_ui)
