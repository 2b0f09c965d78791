// The floor under every start-up time.
int main(void) { return 0; }
