# vosk-makedb: creates an empty, a sample or a synthetic database file.
add_executable(vosk-makedb ${CMAKE_CURRENT_SOURCE_DIR}/makedb/main.cpp)
target_link_libraries(vosk-makedb PRIVATE vosk_data)
set_target_properties(vosk-makedb PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
