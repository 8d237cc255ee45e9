@echo off
rem Runs the tests in this folder, or those that are named (run-tests.bat log_test), from an administrator's
rem prompt: see README.md. Says for each whether it passed; what a failed one said stays in NAME.log. Ends with
rem 0, or with 1 when one failed or nothing was run.
setlocal EnableExtensions DisableDelayedExpansion
set ERRORLEVEL=
cd /d "%~dp0"
if not "%CD%"=="%CD: =%" echo Please take a folder whose name has no blank.& exit /b 1
rem Only an administrator may run fltmc. (Wine has none.)
set "system=%SystemRoot%\System32"
if exist "%system%\fltmc.exe" "%system%\fltmc.exe" >nul 2>&1
if %ERRORLEVEL% NEQ 0 echo This is no administrator's prompt.& exit /b 1

set tests=checks_test.bat end_to_end_test.exe format_test.exe grammar_test.exe install_test.bat log_test.exe
set refused=
for %%f in (%tests% svcinst.exe end_to_end_service.exe preload.exe smashed_stack.exe libearly_plugin.dll libexample_plugin.dll) do if not exist %%f call :refuse "%%f is missing. Has an antivirus taken it?"
for %%d in (run-tests.tmp install_test.tmp) do if exist %%d call :refuse "There is a folder %%d. If a run that was cut off has left it: rd /s %%d"
for %%s in (hello svcinst-stopped svcinst-running svcinst-hung svcinst-long) do call :expect_none %%s
if defined refused exit /b 1
mkdir run-tests.tmp
set "TMP=%CD%\run-tests.tmp"
set passed=0
set failed=0
if not "%~1"=="" set tests=%*
for %%t in (%tests%) do call :run %%~t
rd /s /q run-tests.tmp
echo %passed% passed, %failed% failed
if %failed% EQU 0 if %passed% GTR 0 exit /b 0
exit /b 1

:expect_none
"%system%\sc.exe" query %1 >nul 2>&1
if errorlevel 1 exit /b
call :refuse "There is a service %1, a name that the tests need. If a run that was cut off has left it: see README.md"
exit /b

:refuse
echo %~1
set refused=1
exit /b

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
