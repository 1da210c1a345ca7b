#pragma once
// Hands the main window's menu entries, and the views' links to the windows above them, to the
// windows that carry them out. The main window calls WireMainWindow once it has built its menus;
// each part of the program wires its own entries in its own file.
class frmMain;

void WireMainWindow(frmMain& w);

// One function a part; each lives in wire_<part>.cpp.
void wireEditors(frmMain& w);   // Add, Edit Item, the views' Edit buttons
void wireRecordOps(frmMain& w); // Delete, Copy, Rename, Backup and Restore
void wireOptions(frmMain& w);   // Options and the game channel
void wireMaps(frmMain& w);      // Sector Maps, and the views' links to a map
void wirePrinting(frmMain& w);  // Print Filtered List
void wireHelp(frmMain& w);      // Help Topics, Read Me, About, Submit a Bug
void wirePlanner(frmMain& w);   // the shopping list
