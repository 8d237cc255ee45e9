@echo off
rem The checks that end a program say what they saw, and end it with STATUS_STACK_BUFFER_OVERRUN.
smashed_stack.exe 2>said
if %ERRORLEVEL% NEQ -1073740791 exit /b 1
find "stack smashing detected" said
if errorlevel 1 exit /b 1
smashed_stack.exe with-a-checked-size 2>said
if %ERRORLEVEL% NEQ -1073740791 exit /b 1
find "buffer overflow detected" said
if errorlevel 1 exit /b 1
del said
exit /b 0
