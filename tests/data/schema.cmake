# The schema, the sample world and the synthetic generator.
vosk_add_test(tst_schema SOURCES tst_schema.cpp tst_sampledata_db.h LIBS vosk_data)
vosk_add_test(tst_sampledata SOURCES tst_sampledata.cpp tst_sampledata_db.h LIBS vosk_data)
vosk_add_test(tst_synthetic SOURCES tst_sampledata_synthetic.cpp tst_sampledata_db.h LIBS vosk_data)
vosk_add_test(tst_samplestatements SOURCES tst_sampledata_statements.cpp LIBS vosk_data)
