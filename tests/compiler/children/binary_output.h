#pragma once

// Makes standard output and standard error take bytes as they are, without making CR LF of LF.
void UseBinaryOutput();
