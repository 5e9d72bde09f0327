<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>إغلاق الرسالة</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>إعادة المحاولة: %1</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>تثبيت %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>إلغاء %1</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>يُرجى الانتظار</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>يتعذّر إنشاء المجلد ⁦%1⁩.</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>يتعذّر الوصول إلى ⁦%1⁩، أو أنه ليس خادم خرائط.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>لا يذكر ⁦%1⁩ إصدار خرائط صالحًا للاستخدام.</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>الخادم لا يقدّم ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>الملف ⁦%1⁩ على الخادم تالف أو لا يضم أي منطقة؛ سيبقى الملف القديم.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>تتعذّر كتابة ⁦%1⁩.</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>يتعذّر إنشاء المجلد ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>تتعذّر كتابة ملف القفل ⁦%1⁩.</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>يعمل برنامج آخر (العملية %1) على بيانات الخرائط هذه. أعد المحاولة عندما ينتهي.</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>اكتمل تحديث كان قد انقطع: الخرائط الجديدة قيد الاستخدام.</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>تعذّر إكمال تحديث كان قد انقطع: الخرائط القديمة قيد الاستخدام.</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>اكتملت الآن العودة إلى الخرائط القديمة بعد انقطاعها.</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>تعذّر إكمال العودة إلى الخرائط القديمة: الخرائط الجديدة قيد الاستخدام.</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>اكتملت إزالة كانت قد انقطعت.</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>عادت بيانات الصوت التي نُحّيت أثناء الإزالة إلى مكانها.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>انقطع استبدال بيانات الخرائط ويتعذّر إكماله.</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>ما كان يعترض الطريق صار اسمه ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>يجري تحميل بيانات الخرائط أو تغييرها. أعد المحاولة عند الانتهاء.</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>تعذّر إكمال استبدال بيانات الخرائط: %1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>تعذّر استبدال بيانات الخرائط، وبقيت كما كانت: %1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>لم تنقل الصدفة كل المجلدات؛ نُقل الباقي من دونها.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>لا يصلح «%1» لاحقةً لاسم مجموعة بيانات.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>انقطع استبدال بيانات الخرائط. أعد تشغيل البرنامج أولًا.</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>لم يستجب الخادم منذ %L1 ث؛ أُلغيت المحاولة.</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>يجري تحديث الآن.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>لا توجد نسخة احتياطية للعودة إليها.</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>توجد عمليات تثبيت معلّقة (%1).</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>ثُبّتت منذ ذلك الحين مناطق ليست في النسخة الاحتياطية: %1.</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>تتعذّر كتابة فهرس المدن وحالة التحديث.</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>انقطع تغيير سابق للخرائط ويجب إصلاحه أولًا.</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>يحتوي اسم المجلد ⁦%1⁩ على أحرف لا تقبلها أوامر التحديث.</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>لا يوجد فهرس بعد.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>لا تزال النسخة الاحتياطية من تحديث سابق موجودة.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>تتعذّر كتابة حالة التحديث.</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>يفتقر الإصدار ⁦%1⁩ إلى مناطق مثبّتة: %2.</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>تتعذّر كتابة الخرائط المجهّزة.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>لا خرائط بداخلها</numerusform>
            <numerusform>خريطة واحدة بداخلها</numerusform>
            <numerusform>خريطتان بداخلها</numerusform>
            <numerusform>%Ln خرائط بداخلها</numerusform>
            <numerusform>%Ln خريطة بداخلها</numerusform>
            <numerusform>%Ln خريطة بداخلها</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>اختر خريطة</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>يظهر هنا حجمها وما يمكن فعله بها.</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>لا توجد شبكة</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>‏Wi‑Fi أو كابل</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>شبكة الجوّال</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>المتاح: %1</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>لم يعد القرص يقبل بيانات. هل هو ممتلئ؟</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>لم يُعثر على ⁦%1⁩.</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>يعترض ⁦%1⁩ الطريق وتتعذّر إعادة تسميته.</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>يعيد ⁦%1⁩ الحالة %2.</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>حجم ⁦%1⁩ كبير جدًا.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>تمت المقاطعة.</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>لم يستجب ⁦%1⁩ منذ %L2 ث.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>يتعذّر الوصول إلى ⁦%1⁩: %2.</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>يُضغط ⁦%1⁩ أثناء النقل، ولا يجوز ذلك.</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>تغيّر ⁦%1⁩ أثناء قراءته.</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>انقطع نقل ⁦%1⁩: %2.</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>يرسل ⁦%1⁩ بايتات أقل مما يعلن.</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>يرسل ⁦%1⁩ بايتات أكثر مما يعلن.</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>يرسل ⁦%1⁩ جزءًا غير المطلوب.</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>الخرائط المثبّتة</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>المتاح على هذا الجهاز: %1</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>تحديث %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>إزالة %1</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>لا توجد خرائط مثبّتة</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>تعمل الخرائط المثبّتة بلا أي شبكة. اختر المناطق التي تحتاج إليها.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>اختيار الخرائط</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>الخرائط</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>جارٍ فتح الخرائط</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>يتعذّر فتح الخرائط</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>إعادة المحاولة</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>المثبّتة</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>عمليات النقل</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>أُزيلت خريطة %1 وتوفّر %2 من المساحة.</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>الخادم لا يستجيب. أعد المحاولة لاحقًا.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>قبل البحث عن خرائط جديدة، انتظر انتهاء عمليات النقل أو ألغِها.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>لا يوجد اتصال بالشبكة.</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>قائمة الخرائط محدّثة (الإصدار ⁦%1⁩).</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>توجد على الخادم خرائط أحدث (الإصدار ⁦%1⁩). تبقى الخرائط المثبّتة على الإصدار ⁦%2⁩.</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>يجري تحديث كل الخرائط. لا يمكن تثبيت خريطة أخرى أو إزالتها قبل انتهاء ذلك.</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>تحديث كل الخرائط لم يكتمل. تابعه أو تخلَّ عنه قبل تثبيت خرائط أو إزالتها.</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>لا تزال الخرائط القديمة من آخر تحديث محفوظة. أزلها أولًا.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>لا يوجد اتصال بالشبكة.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>التنزيلات في انتظار شبكة Wi‑Fi.</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>يجري تغيير الخرائط بالفعل.</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>لم تُفتح الخرائط بعد.</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>يجري جلب قائمة الخرائط. انتظر حتى ينتهي ذلك.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>دع عمليات النقل تنتهي أو ألغها قبل تحديث كل الخرائط.</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>تجري إزالة الخرائط القديمة.</translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%L2)</translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation>الخرائط القديمة</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>الإصدار المحفوظ</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>الحجم</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>قيد القياس</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>الاحتفاظ بالخرائط القديمة</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>العودة إلى الإصدار %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>إزالة الخرائط القديمة</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>إزالة النسخة الاحتياطية</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>هل تريد العودة إلى الإصدار %1؟</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>تُستخدم الخرائط القديمة من جديد. تبقى الأحدث على هذا الجهاز إلى أن تزيلها.</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>ثُبّتت هذه الخرائط بعد ذلك وليست ضمن القديمة: %1.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>العودة</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>هل تريد إزالة الخرائط القديمة؟</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>يحرّر ذلك %1.</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>لا يمكنك العودة إلى الإصدار %1 بعد ذلك.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>إزالة</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>قيد الإزالة</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>رجوع</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>تتعذّر الكتابة في المجلدين ⁦%1⁩ و⁦%2⁩.</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>يتعذّر نسخ فهرس المدن والملف config.cfg إلى الخرائط الجديدة.</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>تتعذّر إزالة الملف ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>تتعذّر كتابة حالة التحديث.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>التقدّم غير معروف بعد</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%L1%</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>حجم التنزيل</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>الحجم بعد التثبيت</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>على هذا الجهاز</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>إلغاء التنزيل</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>إزالة</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>إعادة المحاولة</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>تحديث</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>تثبيت</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>لا يضم الفهرس المنطقة «%1».</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>يجري تثبيت «%1» بالفعل.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>لا يذكر الفهرس عنوانًا صالحًا للمنطقة «%1».</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>تحتاج «%1» إلى %2، لكن المتاح %3 فقط.</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>تعذّرت كتابة قائمة عمليات التثبيت المعلّقة.</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>لا يجري تثبيت «%1».</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>يجري بالفعل وضع ملفات «%1» في مكانها.</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>المنطقة «%1» غير مثبّتة.</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>يجري تثبيت «%1»؛ ألغِ ذلك أولًا.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>لا يحتوي أرشيف «%1» على أي مربعات خرائط.</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>بعض ملفات «%1» مفقود بعد التثبيت.</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>لم يعد الفهرس يضم المنطقة «%1».</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>تعذّر تسجيل «%1»: تتعذّر كتابة ملف المحتوى.</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>أرسل الخادم %1 بايت لـ«%2»، لكن الفهرس يذكر %3؛ لم يتغيّر شيء. هل توجد صفحة تسجيل دخول في الطريق، أم أن الفهرس قديم؟</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>أرشيف «%1» تالف أو تعذّر فكّ ضغطه؛ لم يتغيّر شيء.</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>تعذّر وضع ملفات «%1» في مكانها. هل القرص ممتلئ؟</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>رفض الخادم إرسال أرشيف «%1».</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>تعذّر تنزيل أرشيف «%1»: لا يمكن الوصول إلى الخادم أو أنه لا يملك الأرشيف.</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>لم يفشل التثبيت الأخير لـ %1.</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>مثبّتة</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>على هذا الجهاز: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>لا خرائط بداخلها</numerusform>
            <numerusform>خريطة واحدة بداخلها</numerusform>
            <numerusform>خريطتان بداخلها</numerusform>
            <numerusform>%Ln خرائط بداخلها</numerusform>
            <numerusform>%Ln خريطة بداخلها</numerusform>
            <numerusform>%Ln خريطة بداخلها</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 من %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>أوقفتها مؤقتًا</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>في انتظار شبكة Wi‑Fi</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>غير مثبّتة</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>في انتظار دورها</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>جارٍ التنزيل، %1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>جارٍ التنزيل</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>جارٍ التنزيل: %L1%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>جارٍ التنزيل: %L1%، بقي %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>جارٍ فكّ الضغط</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>جارٍ فكّ الضغط: %L1%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>جارٍ وضع الملفات في مكانها</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>جارٍ الإنهاء</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>مثبّتة</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>أُلغيت</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%L1 ث</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%L1 د</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%L1 س %L2 د</translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation>في انتظار شبكة</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>خرائط للتنزيل</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>كل الخرائط</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>البحث عن خرائط جديدة</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>البحث في كل الخرائط</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>لا توجد خريطة بهذا الاسم</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>جرّب حروفًا أقل، أو الاسم بلغة أخرى.</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>لا توجد خرائط معروفة بعد</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>اجلب قائمة الخرائط من الخادم أولًا. القائمة صغيرة؛ أما الخرائط نفسها فتُنزّل واحدة تلو الأخرى حسب اختيارك.</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>جلب القائمة</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>كامل %1</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>التفاصيل</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>تثبيت</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>الملف ⁦%1⁩ مشفّر.</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>الملف ⁦%1⁩: الذاكرة غير كافية.</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>يتعذّر سرد محتويات ⁦%1⁩: لا يقدّم خادمه إلا ملفات كاملة.</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>الملف ⁦%1⁩ تالف أو ليس أرشيفًا: %2.</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>لا يذكر ⁦%1⁩ أحجام ملفاته.</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>يحتوي ⁦%1⁩ على ملف لا يجوز فكّ ضغطه: «⁦%2⁩».</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>هل تريد إزالة %1؟</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>سيوفّر ذلك %1 (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>لا ملفات</numerusform>
            <numerusform>ملف واحد</numerusform>
            <numerusform>ملفان</numerusform>
            <numerusform>%Ln ملفات</numerusform>
            <numerusform>%Ln ملفًا</numerusform>
            <numerusform>%Ln ملف</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>يبقى %1 (%2) لأن خرائط مثبّتة أخرى تحتاج إليها.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>إزالة</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>جارٍ حساب المساحة التي ستتوفر</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>مسح البحث</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>خادم المحتوى</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>العنوان الذي تُنزّل منه الخرائط.</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>هذا ليس عنوان http.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>استخدام الخادم</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>نظام ملفات آخر موصول عند ⁦%1⁩؛ تتعذّر إزالته.</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>يتعذّر نقل ⁦%1⁩ إلى مكان آمن.</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>حسب النظام</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>فاتح</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>داكن</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>متوقّف</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>الأخطاء</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>الأخطاء والتحذيرات</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>المعلومات أيضًا</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>كل شيء</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>غير معروف</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>الشبكة</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>لا توجد شبكة</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>متصل عبر Wi‑Fi أو كابل</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>متصل عبر شبكة الجوّال</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>حدّدتَها يدويًا</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>حسب ما يفيد به النظام</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>النظام لا يفيد بذلك</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>التنزيل عبر شبكة الجوّال</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>قد تترتّب عليه تكلفة. عند الإيقاف تنتظر التنزيلات شبكة Wi‑Fi.</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>تحديد الشبكة يدويًا</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>عندما لا يعرف النظام حالة الشبكة.</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>توجد شبكة</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>إنها Wi‑Fi أو كابل</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>على هذا الجهاز</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>الخرائط المثبّتة</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>لا خرائط</numerusform>
            <numerusform>خريطة واحدة</numerusform>
            <numerusform>خريطتان</numerusform>
            <numerusform>%Ln خرائط</numerusform>
            <numerusform>%Ln خريطة</numerusform>
            <numerusform>%Ln خريطة</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>المساحة المتاحة</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>إصدار الخرائط</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>إصدار كائنات الخرائط</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>فهرس المدن</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>لا حزم مدن</numerusform>
            <numerusform>حزمة مدن واحدة</numerusform>
            <numerusform>حزمتا مدن</numerusform>
            <numerusform>%Ln حزم مدن</numerusform>
            <numerusform>%Ln حزمة مدن</numerusform>
            <numerusform>%Ln حزمة مدن</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>المجلد</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>الخادم</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>خادم المحتوى</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>قائمة الخرائط</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>لا خرائط للاختيار منها</numerusform>
            <numerusform>خريطة واحدة للاختيار</numerusform>
            <numerusform>خريطتان للاختيار</numerusform>
            <numerusform>%Ln خرائط للاختيار منها</numerusform>
            <numerusform>%Ln خريطة للاختيار منها</numerusform>
            <numerusform>%Ln خريطة للاختيار منها</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>توجد على الخادم خرائط أحدث: الإصدار ⁦%1⁩</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>إيقاف البحث</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>البحث عن خرائط جديدة</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>هذا التطبيق</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>المظهر</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>السجل</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>الإصدار</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>تحديث كل الخرائط</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>جارٍ</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>الإصدار %1 على هذا الجهاز</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>يجري تحضير الإصدار %1</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>لا توجد خرائط أحدث معروفة</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>انقطع استبدال بيانات الخرائط. أعد تشغيل البرنامج أولًا.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>لا يصلح «%1» لاحقةً لاسم مجموعة بيانات.</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>يحتوي المسار ⁦%1⁩ على مسافة أو محرف آخر لا يستطيع التحديث معالجته. انقل بيانات الخرائط إلى مجلد باسم بسيط.</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>لا توجد بيانات خرائط مجهّزة.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>لا توجد نسخة احتياطية للعودة إليها.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>لا تزال النسخة الاحتياطية من تحديث سابق موجودة (⁦%1⁩). أزلها أو عُد إليها أولًا.</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>يجري تجهيز تحديث آخر (⁦%1⁩). تخلّ عنه أولًا.</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>المجلد ⁦%1⁩ مفقود.</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>العنصر ⁦%1⁩ رابط أو ملف؛ يجب أن يكون مجلدًا.</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>نظام ملفات آخر موصول عند ⁦%1⁩؛ يجب أن يكون مجلدًا من نظام الملفات المحيط به.</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>يعترض ⁦%1⁩ مكان بيانات الصوت.</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>المجلد ⁦%1⁩ محمي من الكتابة.</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>لم تبقَ مساحة في ⁦%1⁩.</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>الملف ⁦%1⁩ مفقود أو تالف.</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>الملف ⁦%1⁩ مفقود أو تالف أو لا يضم أي منطقة.</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>تتعذّر كتابة ⁦%1⁩ (%2).</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>تتعذّر قراءة السجل ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>السجل ⁦%1⁩ تالف أو لم يكتبه هذا البرنامج.</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>كتب إصدار أحدث من هذا البرنامج السجل ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>السجل ⁦%1⁩ تالف.</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>تتعذّر إزالة ⁦%1⁩ (%2).</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>لا توجد شبكة. ستُستأنف التنزيلات فور توفّر شبكة.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>التنزيلات في انتظار شبكة Wi‑Fi.</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>عمليات النقل</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>استئناف</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>استخدام شبكة الجوّال</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>إعادة المحاولة: %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>إلغاء %1</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>لا توجد عمليات نقل</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>تظهر هنا الخرائط التي تختار تثبيتها إلى أن تصبح جاهزة.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>اختيار الخرائط</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>إزالة %1 من القائمة</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>مسح عمليات النقل المنتهية</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>لدى الخادم خرائط أحدث: الإصدار %1.</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>عرض التحديث</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>تحديث كل الخرائط</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>لا يذكر ⁦%1⁩ إصدار خرائط صالحًا للاستخدام.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>تتعذّر كتابة ⁦%1⁩.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>الملف ⁦%1⁩ على الخادم تالف أو لا يضم أي منطقة.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>لا يذكر الفهرس عنوانًا صالحًا للمنطقة «%1».</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>تمت المقاطعة.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>لا يحتوي أرشيف «%1» على أي مربعات خرائط.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>التحديث في الانتظار</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>تجري العودة إلى الخرائط القديمة</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>يجري تحديث الخرائط</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>حُدّثت كل الخرائط</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>تعذّر إكمال التحديث</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>خرائط أحدث جاهزة</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>هناك تحديث لم يكتمل</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>توجد خرائط أحدث</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>لا توجد خرائط أحدث معروفة</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>لا توجد شبكة يُسمح باستخدامها. يتابع من تلقاء نفسه حالما تتوفر شبكة.</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>يجري سؤال الخادم عن إصداره</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>يجري جلب قائمة خرائط الإصدار %1</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>يجري تحضير الإصدار %1</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>يجري تحضير %1</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>يجري وضع الإصدار %1 قيد الاستخدام</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>يُرجى الانتظار</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>حلّ الإصدار %1 محل الإصدار %2.</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>الخرائط من أحدث إصدار.</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>لم يعد الإصدار %1 يضم هذه الخرائط المثبتة:</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>خرائط الإصدار %1 على هذا الجهاز. يمكن استخدامها دون تنزيل.</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>يتابع التحديث إلى الإصدار %1 من حيث توقف. تبقى الخرائط المستخدمة كما هي حتى يكتمل.</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>تُحدَّث كل الخرائط المثبتة معًا. تُنزَّل الجديدة إلى جانب المستخدمة، ويمكن العودة إلى هذه لاحقًا.</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>يخبر الخادم إن كانت هناك خرائط أحدث.</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>تحديث كل الخرائط</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>إذا تابعت من دونها، فستبقى ضمن الخرائط القديمة فقط.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 من %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>المتابعة من دونها</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>إعادة المحاولة</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>تحديث كل الخرائط</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>استخدام الإصدار %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>استخدام شبكة الجوّال</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>إزالة الخرائط الأحدث</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>التخلي</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>البحث عن خرائط جديدة</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>الإصدارات</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>قيد الاستخدام</translation>
    </message>
    <message>
        <source>None</source>
        <translation>لا شيء</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>الأحدث</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>على الخادم</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>المساحة المتاحة</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>غير معروف</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>هل تريد إزالة الخرائط الأحدث؟</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>هل تريد التخلي عن التحديث؟</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>يُزال ما نُزّل من الإصدار %1. تبقى الخرائط المستخدمة كما هي.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>إزالة</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>يحتاج التحديث إلى %1 على الأكثر في ⁦%2⁩ إضافةً إلى الخرائط المستخدمة، لكن المتاح %3 فقط.</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>يتعذّر الوصول إلى ⁦%1⁩، أو أنه ليس خادم خرائط.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>لا يذكر ⁦%1⁩ إصدار خرائط صالحًا للاستخدام.</translation>
    </message>
</context>
</TS>
