#include "windows/help_document.hpp"

#include <string_view>

namespace drav {
namespace {

// One paragraph a line, in the order of the document.
constexpr std::string_view kLines[] = {
    "Drav",
    "",
    "The Akaike Information Criterion (AIC) is an information-theoretic approach to finding the best "
    "model in a candidate set of models. It weighs how well each model describes the data against "
    "how many parameters it spends doing so, and so trades descriptive accuracy against parsimony: a "
    "model that fits a little better but needs many more parameters is not rewarded for it. The aim "
    "is good generalizability, a model that will describe new data from the same process, rather "
    "than the best possible fit to the data at hand. Burnham and Anderson (2002) give a full account "
    "of the approach; Akaike (1973, 1974) laid its foundation.",
    "",
    "In current practice the model with the minimum AIC value is selected as the best model of the "
    "set. Unlike the Bayesian Information Criterion (Schwarz 1978), the AIC does not assume that the "
    "true model is among the candidates; it estimates which candidate comes closest to the unknown "
    "truth, measured by the Kullback-Leibler discrepancy (Kullback and Leibler 1951), the "
    "information lost when a model is used to approximate reality. Parsimony follows from this "
    "measure without being imposed: a model with too few parameters loses information through bias, "
    "one with too many through the variance of its estimates.",
    "",
    "AIC = -2 ln(ML) + 2k",
    "",
    "Here ML is the maximized likelihood of the model given the data and k is the number of its "
    "estimated parameters. AIC values can be rank ordered, smallest first, but the absolute value of "
    "an AIC has no meaning of its own: it depends on the data and on constants that are the same for "
    "every model fitted to them. Only differences between AIC values of models fitted to the same "
    "data carry information, and Drav works with nothing else.",
    "",
    "The AIC difference of a model is its AIC value less the minimum AIC value of the set, so that "
    "the best model has a difference of 0 and every other model a positive one. As a rule of thumb, "
    "models with a difference close to 0 have a lot of support from the data; models with a "
    "difference of 4-7 have considerably less; models with a difference of 9-14, or above about "
    "9-11, have relatively little; and models with a difference greater than 20 have essentially "
    "none. These bands are guides for reading the numbers, not thresholds for a test, and the "
    "weights below say the same thing more precisely.",
    "",
    "The strength of the evidence for a model computed from Drav values is:",
    "––––––––––––––––––––––––",
    "Drav\tEvidence Ratio",
    "––––––––––––––––––––––––",
    "2\t\t2.7",
    "4\t\t7.4",
    "6\t\t20.1",
    "8\t\t54.6",
    "10\t\t148.4",
    "12\t\t403.4",
    "14\t\t1096.6",
    "16\t\t2981.0",
    "18\t\t8103.1",
    "20\t\t22026.0",
    "50\t\t72 billion",
    "–––––––––––––––––––––––––",
    "The ratios follow from exp(Drav/2); the same scale is discussed by Burnham and Anderson (2002).",
    "",
    "The evidence is the numerical value of the ratio itself. Words such as weak, strong or "
    "overwhelming are value judgments that a reader may attach to it afterwards; the ratio is what "
    "the data say, and it is best reported as it stands. Two studies that find the same ratio have "
    "found the same strength of evidence, whatever words their authors chose for it.",
    "",
    "Weights. The relative likelihood of a model given the data comes from transforming its AIC "
    "difference ∆: [AICw = exp(-(1/2∆)) or AICw = exp (∆/2)]. Each transformed value divided by the "
    "sum of the transformed values over all candidate models gives the Akaike weights. They add up "
    "to 1 over the set and reflect the probability of each model, given the data and the set of "
    "candidate models, that it is the best approximating model of the set. A weight is a property of "
    "the whole set: add or remove a model and every weight changes, though the differences between "
    "the remaining models do not.",
    "",
    "Evidence ratios. The ratio of the Akaike weights of any two models tells how much more likely "
    "one is than the other. Comparing every model with the best one gives an evidence ratio for each "
    "model, 1.0 for the best model itself. For example, a best model with a weight of 0.98 against a "
    "rival with a weight of 0.004 has evidence 245 times stronger than that rival. Drav prints the "
    "ratio of the best model over each model in the column ER, and >99999 for every ratio beyond "
    "that.",
    "",
    "Akaike weights and evidence ratios are Bayesian in nature: they can be read as posterior model "
    "probabilities under prior probabilities that depend on the sample size and the number of "
    "parameters (Burnham and Anderson 2004). They are statements about models in the set, not about "
    "models that were never fitted, and they change whenever the set changes.",
    "",
    "",
    "Input",
    "A tab-delimited text file (.txt) is used for data input. This file must contain data in two "
    "columns: (1) model name (string of 8 or fewer characters) and (2) the AIC value. Tabs separate "
    "the two data columns and each line ends with a return.",
    "",
    "Example input for 5 models, a small set made up by the Drav project to show the form "
    "(examples/five-models.txt in the source):",
    "Number of models = 5",
    "",
    "A1\t204",
    "A2\t202",
    "B1\t206",
    "B2\t206",
    "C1\t214",
    "",
    "Results:",
    "–––––––––––––––––––––––––––––––––––––––––––––––",
    "Model\tAIC\t\tDrav\tweight\t\tER",
    "–––––––––––––––––––––––––––––––––––––––––––––––",
    "A1         +204.0       2.0        0.2242         2.72                ",
    "A2         +202.0       0.0        0.6094         1.0                 ",
    "B1         +206.0       4.0        0.0825         7.39                ",
    "B2         +206.0       4.0        0.0825         7.39                ",
    "C1         +214.0       12.0       0.0015         403.43    ",
    "–––––––––––––––––––––––––––––––––––––––––––––––",
    "",
    "Model A2 is the best model of this set: its probability is .61 given the data and the set of "
    "candidate models, and it is 2.7 times more likely than model A1, the second best. Models B1 and "
    "B2 share a weight of .08, and model C1, with a difference of 12, has almost no support. "
    "Together, A2 and A1 hold more than four fifths of the total weight, so a conclusion that rests "
    "on either of them is well supported by this set.",
    "",
    "Cautions",
    "Inferences depend on the models in the candidate set: a model that was never fitted cannot be "
    "found best, so the set deserves as much thought as the data. The AIC values must have been "
    "calculated with the log likelihood as specified above, and not with the version corrected for "
    "sample size (AICc, Hurvich and Tsai 1989) unless every value of the set was calculated that "
    "way. Statistics packages print the log likelihood in different forms; check which one yours "
    "reports, and whether its AIC already includes the penalty term. An example of the output of one "
    "statistics package, and the AIC computed from it:",
    "   Number of Free Parameters = 45",
    "   Loglikelihood H0 Vaue = -35403.436",
    "   AIC = (45*2) + (-2 * -35403.436) = 70896.872",
    "",
    "Further cautions. All AIC values of a set must come from models fitted to the same data set, "
    "with the same observations and the same response; values from different data sets cannot be "
    "compared. The best model of a set need not be a good model: it is only the best of those that "
    "were tried, and its fit should be checked on its own merits. With many observations the AIC can "
    "favour complex models that overfit the data at hand, so a model only slightly ahead of a simpler one deserves "
    "a second look before it is preferred.",
    "",
    "Detailed discussions of these points, with many worked examples from ecology, evolution, "
    "psychology and the social sciences, are found in the literature listed below, which is also "
    "where to look before reporting results.",
    "",
    "     ••••••••••••••••••••••••••••••••••••••••••••••••••••••••••••••",
    "",
    "Akaike, H. 1973. Information theory and an extension of the maximum likelihood principle. Pages "
    "267-281 in B. N. Petrov and F. Csáki, editors. Second International Symposium on Information "
    "Theory. Akadémiai Kiadó, Budapest.",
    "",
    "Akaike, H. 1974. A new look at the statistical model identification. IEEE Transactions on "
    "Automatic Control 19:716-723.",
    "",
    "Anderson, D. R., K. P. Burnham, and W. L. Thompson. 2000. Null hypothesis testing: problems, "
    "prevalence, and an alternative. Journal of Wildlife Management 64:912-923.",
    "",
    "Burnham, K. P., and D. R. Anderson. 2002. Model selection and multimodel inference: a practical "
    "information-theoretic approach. Second edition. Springer, New York.",
    "",
    "Burnham, K. P., and D. R. Anderson. 2004. Multimodel inference: understanding AIC and BIC in "
    "model selection. Sociological Methods and Research 33:261-304.",
    "",
    "Burnham, K. P., D. R. Anderson, and K. P. Huyvaert. 2011. AIC model selection and multimodel "
    "inference in behavioral ecology: some background, observations, and comparisons. Behavioral "
    "Ecology and Sociobiology 65:23-35.",
    "",
    "Hurvich, C. M., and C.-L. Tsai. 1989. Regression and time series model selection in small "
    "samples. Biometrika 76:297-307.",
    "",
    "Johnson, J. B., and K. S. Omland. 2004. Model selection in ecology and evolution. Trends in "
    "Ecology and Evolution 19:101-108.",
    "",
    "Kullback, S., and R. A. Leibler. 1951. On information and sufficiency. Annals of Mathematical "
    "Statistics 22:79-86.",
    "",
    "Schwarz, G. 1978. Estimating the dimension of a model. Annals of Statistics 6:461-464.",
    "",
    "Symonds, M. R. E., and A. Moussalli. 2011. A brief guide to model selection, multimodel "
    "inference and model averaging in behavioural ecology using Akaike's information criterion. "
    "Behavioral Ecology and Sociobiology 65:13-21.",
    "",
    "Wagenmakers, E.-J., and S. Farrell. 2004. AIC model selection using Akaike weights. Psychonomic "
    "Bulletin and Review 11:192-196.",
    "",
    "",
    "––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––––",
    "Drav is offered by the Drav project as it is, without warranty of any kind, express or implied, "
    "including the warranties of merchantability and of fitness for a particular purpose. The whole "
    "risk as to the quality and the results of the program lies with you, and so does the choice of "
    "the models and of the data that go into it.",
    "In no event shall the Drav project or anyone who contributed to it be liable for any claim, "
    "damages or other liability arising from the use of the program or of its results, including "
    "conclusions drawn from a report, whether in an action of contract, tort or otherwise.",
    "Check every result that matters to you against a second source, such as a hand calculation, "
    "before you rely on it. If something goes wrong, please tell the Drav project and quote the "
    "exact wording of any ",
};

}  // namespace

const std::string& HelpDocument() {
  static const std::string document = [] {
    std::string text;
    for (std::size_t i = 0; i < std::size(kLines); ++i) {
      // A line ends in one carriage return; the last line has none.
      if (i > 0) text += '\r';
      text += kLines[i];
    }
    return text;
  }();
  return document;
}

}  // namespace drav
