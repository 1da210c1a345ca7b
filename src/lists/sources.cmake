target_sources(vosk_lists PRIVATE
  listmodel.h sortkeys.h wildcard.h finditem.h)
target_sources(vosk_lists_ui PRIVATE
  listviewsort.h frmfind.h)
