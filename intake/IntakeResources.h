/* Resources of the program file that belong to message intake.  Plain
 * definitions, shared by the resource compiler and the C++ compiler. */
#ifndef ORIEL_INTAKE_RESOURCES_H
#define ORIEL_INTAKE_RESOURCES_H

/* Type library of the component interface; LoadTypeLib finds it by default. */
#define IDR_TYPELIB         1
/* Registry scripts: the application entry, and the ShowMess class. */
#define IDR_APPID_SCRIPT    100
#define IDR_SHOWMESS_SCRIPT 111

#endif
