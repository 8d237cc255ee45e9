@echo off
rem Runs the test programs in this folder, or those that are named (run-tests.bat log_test), from an
rem administrator's prompt. Says for each whether it passed; what a failed one said stays in NAME.log.
rem Ends with 0, or with 1 when one failed. Services that they made are gone afterwards.
setlocal
cd /d "%~dp0"
if not "%CD%"=="%CD: =%" echo Please take a folder whose name has no blank.& exit /b 1
sc query hello >nul 2>&1
if not errorlevel 1 echo There is a service "hello", a name that the tests need.& exit /b 1
mkdir temp 2>nul
set "TMP=%CD%\temp"
set "SVCINST_DOCS=%CD%\docs"
set passed=0
set failed=0

set tests=%*
if not defined tests set tests=*_test.exe *_test.bat
for %%t in (%tests%) do call :run %%~t

taskkill /f /im svcinst-service.exe >nul 2>&1
for /f "tokens=5 delims=\" %%s in ('reg query HKLM\System\CurrentControlSet\Services ^| find "svcinst-"') do sc delete "%%s" >nul
sc stop hello >nul 2>&1
sc delete hello >nul 2>&1
rd /s /q temp 2>nul

echo %passed% passed, %failed% failed
if %failed% EQU 0 if %passed% GTR 0 exit /b 0
exit /b 1

:run
call %1 >%1.log 2>&1
if %ERRORLEVEL% NEQ 0 goto failed
echo passed: %1
set /a passed+=1
del %1.log
exit /b

:failed
type %1.log
echo FAILED: %1
set /a failed+=1
