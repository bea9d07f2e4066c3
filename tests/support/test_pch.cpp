#include "test_pch.h"
