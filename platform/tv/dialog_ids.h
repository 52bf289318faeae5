// Numbers of the driver dialogs and their controls.
#pragma once

#define IDD_CHOICE 100
#define IDD_DISPLAY 101

#define IDC_CHOICES 1000
// Brightness, contrast, hue and saturation follow each other.
#define IDC_CONTROL 1010
#define IDC_USUAL 1020
