// The kinds of control that the dialogs use, with the events of the classic form package:
// setting a text box's text raises its change event; setting a check box, an option button or a
// combo box's index raises its click event when the value changes; a control that the user can't
// reach takes no user input. The screen hears of a change before the event is raised. The
// `User...` operations are for screens alone; each returns whether the control took the input.
#pragma once

#include "common/forms/Buttons.h"
#include "common/forms/ComboBox.h"
#include "common/forms/CommonDialog.h"
#include "common/forms/ForeignControl.h"
#include "common/forms/Label.h"
#include "common/forms/ListView.h"
#include "common/forms/ProgressBar.h"
#include "common/forms/TextBox.h"
#include "common/forms/Timer.h"
