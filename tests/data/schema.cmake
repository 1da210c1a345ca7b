# The schema; the sample world, the synthetic generator and the tool that writes all of them.
vosk_add_test(tst_schema SOURCES tst_schema.cpp tst_sampledata_db.h LIBS vosk_data)
vosk_add_test(tst_sampledata SOURCES tst_sampledata.cpp tst_sampledata_db.h LIBS vosk_data)
target_compile_definitions(tst_sampledata PRIVATE VOSK_MAKEDB="$<TARGET_FILE:vosk-makedb>")
add_dependencies(tst_sampledata vosk-makedb)
