# The engine's tests: translation, connection, result sets, quoting and the error reporter.
vosk_add_test(tst_sqltranslate SOURCES tst_sqltranslate.cpp enginedb.h LIBS vosk_data)
