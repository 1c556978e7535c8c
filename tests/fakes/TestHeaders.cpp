#include "fakes/TestServer.h" // compiled on its own, so that others find it done
