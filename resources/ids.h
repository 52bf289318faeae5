// The numbers of the program's resources, for C++ and for the resource compiler alike.
#pragma once

#define IDB_FRAME_TOP_LEFT 138
#define IDB_FRAME_TOP_RIGHT 139
#define IDB_FRAME_BOTTOM_LEFT 140
#define IDB_FRAME_BOTTOM_RIGHT 141
#define IDB_FRAME_TOP 142
#define IDB_FRAME_BOTTOM 143
#define IDB_FRAME_LEFT 144
#define IDB_FRAME_RIGHT 145
#define IDR_ACCELERATORS 163
#define IDB_PANEL 173
#define IDI_QUORVEX 186
#define IDB_SEGMENTS 187

#define IDS_TRACK 63
