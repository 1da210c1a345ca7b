# The record windows over databases made in a temporary program folder, with the drawn item icons
# linked in as the program's pictures.
target_compile_definitions(vosk_views_fixture PRIVATE VOSK_IMAGES_DIR="${CMAKE_BINARY_DIR}/images")
if(TARGET vosk_images)
  add_dependencies(vosk_views_fixture vosk_images)
endif()
foreach(t tst_frmequipment tst_frmbuildview tst_frmmobs tst_frmrecord)
  vosk_add_test(${t} SOURCES ${CMAKE_CURRENT_LIST_DIR}/${t}.cpp LIBS vosk_views_fixture vosk_views_ui)
endforeach()
