# Start-up and shutdown, the prompt service on screen, and the GIF writer of the drawn pictures.
vosk_add_test(tst_startup SOURCES tst_startup.cpp LIBS vosk_app_ui)
vosk_add_test(tst_startup_prompt SOURCES tst_startup_prompt.cpp LIBS vosk_app_ui)
vosk_add_test(tst_startup_gif SOURCES tst_startup_gif.cpp LIBS vosk_gifwriter Qt6::Gui)
