#include "backend/account_session.h"
#include "backend/dictate_service.h"
