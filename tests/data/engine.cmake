# The engine's tests: translation, connection, result sets, quoting and the error reporter.
vosk_add_test(tst_sqltranslate SOURCES tst_sqltranslate.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_database SOURCES tst_database.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_recordset SOURCES tst_recordset.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_quotes SOURCES tst_quotes.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_errorreport SOURCES tst_errorreport.cpp enginedb.h LIBS vosk_data)
vosk_add_test(tst_enginesample SOURCES tst_enginesample.cpp LIBS vosk_data)
