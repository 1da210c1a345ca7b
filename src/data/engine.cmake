# The engine: translation of the program's SQL for SQLite, the connection, result sets, quoting and
# the error reporter.
target_sources(vosk_data PRIVATE
  sqltokens.h sqltokens.cpp sqltranslate.h sqltranslate.cpp
  recordset_p.h recordsetcolumns.cpp recordsetwrite.cpp)
