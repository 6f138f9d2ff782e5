@echo off
rem unregister [user]
rem   Takes back what register has written: for the machine, or with "user" for the current user.
setlocal
set how=
if /i "%~1"=="user" set how=/n /i:user
cd /d "%~dp0"
set tool=regsvr32
if exist "%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\regsvr32.exe" set tool="%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\regsvr32.exe"
set failed=
for %%d in (TavioClassBillAction.dll DevPlatform.dll Vexo10.dll) do (
  %tool% /s /u %how% %%d
  if errorlevel 1 set failed=1
)
if defined failed (
  echo Not everything could be unregistered.
  exit /b 1
)
echo Unregistered.
