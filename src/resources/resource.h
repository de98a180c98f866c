/* Ids of the controls in the dialogs: for the templates and the code. A block for each dialog. */
#ifndef ORVEL_RESOURCE_H
#define ORVEL_RESOURCE_H

/* The Cancel button of every dialog, which Escape presses. */
#define ID_CANCEL 2

/* METER */
#define ID_METER_BAR 101
#define ID_METER_LABEL 102

#endif
