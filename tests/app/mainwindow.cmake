vosk_add_test(tst_liststatements SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_liststatements.cpp LIBS vosk_app)
