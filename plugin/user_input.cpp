#include "plugin/user_input.h"

USERINPUT g_UserInput;
