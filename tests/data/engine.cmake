# The engine's tests: translation, connection and quoting, result sets and the error reporter.
vosk_add_test(tst_sqltranslate SOURCES tst_sqltranslate.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_database SOURCES tst_database.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_recordset SOURCES tst_recordset.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_errorreport SOURCES tst_errorreport.cpp enginedb.h LIBS vosk_data)
