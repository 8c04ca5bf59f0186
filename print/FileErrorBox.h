#pragma once

// Shows the platform's text for the calling thread's last error in a box
// with no owner (caption string 107, error icon).  The printing code's file
// and printer errors go here; unlike the log writer's report it knows no
// window, so a full disk gets no special treatment.
void ReportFileErrorWithoutWindow();
